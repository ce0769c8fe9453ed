#include "platform/store/Marks.h"

#include <QRandomGenerator>
#include <sqlite3.h>

namespace store {

void CreateMarks(sqlite3* database)
{
    RunOnce(database, R"(create table if not exists "ZEP marks" (num INTEGER PRIMARY KEY, mark INTEGER NOT NULL))");
}

bool HasMarks(sqlite3* database)
{
    return WholeAnswer(database, "select count(*) from sqlite_schema where type='table' and name='ZEP marks'") != 0;
}

Statement PrepareMark(sqlite3* database)
{
    return {database, R"(insert into "ZEP marks" (mark) values (?))"};
}

CommitMark AddMark(sqlite3* database, Statement& prepared)
{
    CommitMark mark;
    mark.random = qint64(QRandomGenerator::global()->generate64());
    prepared.Bind(1, mark.random);
    prepared.Run();
    mark.number = sqlite3_last_insert_rowid(database);
    return mark;
}

CommitMark NewestMark(sqlite3* database)
{
    if (!HasMarks(database))
        return {};
    Statement newest(database, R"(select num, mark from "ZEP marks" order by num desc limit 1)");
    return newest.Step() ? CommitMark{newest.WholeAt(0), newest.WholeAt(1)} : CommitMark();
}

bool HasMark(sqlite3* database, const CommitMark& mark)
{
    if (mark == CommitMark())
        return true;
    if (!HasMarks(database))
        return false;
    Statement found(database, R"(select 1 from "ZEP marks" where num=? and mark=?)");
    found.Bind(1, mark.number);
    found.Bind(2, mark.random);
    return found.Step();
}

void DeleteOldMarks(sqlite3* database)
{
    RunOnce(database, R"(delete from "ZEP marks" where num <= (select max(num) from "ZEP marks") - 5000)");
}

} // namespace store
