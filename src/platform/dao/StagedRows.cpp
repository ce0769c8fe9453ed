#include "platform/dao/StagedRows.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace dao {
StagedRows::StagedRows(const Database& target, const QString& tableName, const QStringList& fields)
    : direct(target), table(target.Open().FindTable(tableName.toStdString()))
{
    if (table == nullptr || table->keyColumn < 0)
        throw RuntimeError(Error::UnknownField);
    for (const QString& field : fields)
        columns.push_back(table->columns.PositionOf(field.toStdString()));
    const auto key = std::ranges::find(columns, table->keyColumn);
    if (key == columns.end() || std::ranges::find(columns, -1) != columns.end())
        throw RuntimeError(Error::UnknownField);
    keyField = std::size_t(key - columns.begin());
    freshRows = "temp." + Quoted("fresh " + table->name);
    changedRows = "temp." + Quoted("changed " + table->name);
    sortedRows = "temp." + Quoted("sorted " + table->name);
    notedRows = "temp." + Quoted("noted " + table->name);
    MakeStore();
}

StagedRows::~StagedRows()
{
    DropStore();
}

void StagedRows::DropStore() noexcept
{
    insert.reset();
    try {
        if (isFilling)
            direct.RollBackIfOpen();
        for (const std::string& rows : {freshRows, changedRows, sortedRows, notedRows})
            direct.Run("drop table if exists " + rows);
    } catch (const RuntimeError&) {
        // The temporary file goes with the connection.
    }
}

std::string StagedRows::Name(std::size_t field) const
{
    return Quoted(table->columns[columns[field]].name);
}

/// Whether both rows have the same in a field: blanks around a text don't count, and a blank text is none.
std::string StagedRows::IsSame(std::size_t field) const
{
    if (table->columns[columns[field]].type != ColumnType::Text)
        return "s." + Name(field) + " is t." + Name(field);
    return "nullif(trim(s." + Name(field) + "),'') is nullif(trim(t." + Name(field) + "),'')";
}

/// The parts for all fields but the key.
std::string StagedRows::ForEachField(const std::string& separator,
                                     const std::function<std::string(std::size_t)>& part) const
{
    std::string all;
    for (std::size_t field = 0; field < columns.size(); ++field) {
        if (field != keyField)
            all += (all.empty() ? "" : separator) + part(field);
    }
    return all;
}

// -- filling

/// Columns and their defaults as the table has them: then SQLite copies whole pages in their order.
void StagedRows::MakeStore()
{
    DropStore();
    std::string definition;
    {
        Rows described = direct.Select("select name, type, dflt_value from pragma_table_info(?,'main')",
                                       {QString::fromStdString(table->name)});
        for (int column = 0; described.Step(); ++column) {
            definition +=
                (column == 0 ? "" : ",") + Quoted(described.Row().TextAt(0)) + " " + described.Row().TextAt(1);
            if (column == table->keyColumn)
                definition += " primary key";
            else if (const std::string initially = described.Row().TextAt(2); !initially.empty())
                definition += " default " + initially;
        }
    }
    direct.Run("create table " + freshRows + " (" + definition + ")");

    std::string names, parameters;
    for (const int column : columns) {
        names += (names.empty() ? "" : ",") + Quoted(table->columns[column].name);
        parameters += parameters.empty() ? "?" : ",?";
    }
    insert = std::make_unique<RepeatedStatement>(
        direct.Prepare("insert into " + freshRows + " (" + names + ") values (" + parameters + ")"));
}

bool StagedRows::Add(const std::vector<Value>& values)
{
    if (values.at(keyField).IsNull())
        throw RuntimeError(Error::NullNotAllowed);
    if (!isFilling) {
        direct.Run("begin");
        isFilling = true;
    }
    for (std::size_t field = 0; field < columns.size(); ++field)
        insert->Bind(int(field) + 1, store::ToColumn(values.at(field), table->columns[columns[field]].type));
    try {
        direct.Run(*insert);
    } catch (const RuntimeError& error) {
        if (error.Code() == Error::DuplicateKey)
            return false;
        throw;
    }
    ++fresh;
    return true;
}

// -- comparing

void StagedRows::Compare()
{
    if (isFilling)
        direct.Run("commit");
    isFilling = false;
    insert.reset();
    direct.Run("begin"); // both statements see the table at one moment
    try {
        if (!notes.empty())
            FindNotes();
        SeparateKnownRows();
        direct.Run("commit");
    } catch (...) {
        direct.RollBackIfOpen();
        throw;
    }
    FindChangedFields();
    if (fresh > 0)
        SortFreshRows();
}

void StagedRows::AlsoNote(const QStringList& fields, const QString& otherTable)
{
    if (direct.WholeNumber("select count(*) from main.sqlite_schema where name='" + otherTable.toStdString() + "'") ==
        0)
        return; // of an older version, which couldn't be upgraded
    notes = Quoted(otherTable.toStdString());
    for (const QString& field : fields)
        notedFields.push_back(Quoted(field.toStdString()));
}

void StagedRows::FindNotes()
{
    std::string fields, isNoted = "o." + table->key + " is not null";
    for (const std::string& field : notedFields) {
        fields += ",s." + field;
        isNoted.append(" and o.").append(field).append(" is s.").append(field);
    }
    direct.Run("create table " + notedRows + " as select s." + table->key + fields + " from " + freshRows +
               " s left join main." + notes + " o on o." + table->key + "=s." + table->key + " where not (" + isNoted +
               ")");
    noted = int(direct.WholeNumber("select count(*) from " + notedRows));
}

void StagedRows::SeparateKnownRows()
{
    const std::string target = "main." + Quoted(table->name);
    const std::string isSame = ForEachField(" and ", [this](std::size_t field) { return IsSame(field); });
    const std::string values = ForEachField(",", [this](std::size_t field) {
        const std::string number = std::to_string(field);
        return "s." + Name(field) + " as n" + number + ",t." + Name(field) + " as o" + number + ",not (" +
               IsSame(field) + ") as d" + number;
    });
    direct.Run("create table " + changedRows + " as select s." + table->key + " as k" + (values.empty() ? "" : ",") +
               values + " from " + freshRows + " s cross join " + target + " t where t." + table->key + "=s." +
               table->key + " and not (" + (isSame.empty() ? "1" : isSame) + ")");
    changed = int(direct.WholeNumber("select count(*) from " + changedRows));
    const int known = direct.Run("delete from " + freshRows + " as s where exists (select 1 from " + target +
                                 " t where t." + table->key + "=s." + table->key + ")");
    same = known - changed;
    fresh -= known;
}

void StagedRows::FindChangedFields()
{
    isChanged.assign(columns.size(), false);
    if (changed == 0)
        return;
    Rows differing = direct.Select(
        "select " + ForEachField(",", [](std::size_t field) { return "max(d" + std::to_string(field) + ")"; }) +
        " from " + changedRows);
    differing.Step();
    for (std::size_t field = 0, answer = 0; field < columns.size(); ++field) {
        if (field != keyField)
            isChanged[field] = differing.Row().WholeAt(int(answer++)) != 0;
    }
}

/// SQLite copies contiguous rows and their indexes page by page. A run in the middle of a table leaves pages half
/// empty, so those rows are inserted in index order.
void StagedRows::SortFreshRows()
{
    const std::vector<std::string> order = ColumnsOfFirstIndex();
    isSorted = !order.empty() && AreAmongOthers(order.front());
    if (!isSorted) {
        MakeIndexes();
        return;
    }
    std::string columnsInOrder;
    for (const std::string& column : order)
        columnsInOrder += Quoted(column) + ",";
    direct.Run("create table " + sortedRows + " as select * from " + freshRows + " order by " + columnsInOrder +
               table->key);
}

/// Whether more than a few of the table's rows lie between the fresh ones.
bool StagedRows::AreAmongOthers(const std::string& leadingColumn) const
{
    constexpr int freshForEachOther = 10;
    const std::string column = Quoted(leadingColumn);
    const int few = fresh / freshForEachOther;
    return direct.WholeNumber("select count(*) from (select 1 from main." + Quoted(table->name) + " where " + column +
                              " between (select min(" + column + ") from " + freshRows + ") and (select max(" + column +
                              ") from " + freshRows + ") limit " + std::to_string(few + 1) + ")") > few;
}

std::vector<std::string> StagedRows::ColumnsOfFirstIndex() const
{
    Rows first =
        direct.Select("select part.name from pragma_index_info((select name from pragma_index_list(?1,'main') order by "
                      "seq desc limit 1),'main') part where part.name is not null order by part.seqno",
                      {QString::fromStdString(table->name)});
    std::vector<std::string> names;
    while (first.Step())
        names.push_back(first.Row().TextAt(0));
    return names;
}

/// The indexes of the table over the fresh rows, for the run from page to page.
void StagedRows::MakeIndexes()
{
    static const QRegularExpression head(R"(^\s*create\s+index\s+("[^"]*"|\w+)\s+on\s+("[^"]*"|\w+))",
                                         QRegularExpression::CaseInsensitiveOption);
    std::vector<std::string> statements;
    const std::string onFreshRows = " on " + freshRows.substr(freshRows.find('.') + 1);
    {
        Rows indexes = direct.Select("select sql from main.sqlite_schema where type='index' and sql is not null "
                                     "and tbl_name=? collate nocase",
                                     {QString::fromStdString(table->name)});
        while (indexes.Step()) {
            QString statement = QString::fromStdString(indexes.Row().TextAt(0));
            if (const QRegularExpressionMatch begins = head.match(statement); begins.hasMatch())
                statements.push_back("create index temp." + begins.captured(1).toStdString() + onFreshRows +
                                     statement.mid(begins.capturedLength()).toStdString());
        }
    }
    for (const std::string& statement : statements)
        direct.Run(statement);
}

std::vector<StagedRows::Difference> StagedRows::Differences(int most) const
{
    std::vector<Difference> differences;
    if (changed == 0)
        return differences;
    Rows rows =
        direct.Select("select k," + ForEachField(",", [](std::size_t field) { return "d" + std::to_string(field); }) +
                      " from " + changedRows + " order by k limit " + std::to_string(most));
    while (rows.Step()) {
        Difference difference{Key(rows.Row().WholeAt(0)), {}};
        int answer = 0;
        for (std::size_t field = 0; field < columns.size(); ++field) {
            if (field != keyField && rows.Row().WholeAt(++answer) != 0)
                difference.fields << QString::fromStdString(table->columns[columns[field]].name);
        }
        differences.push_back(std::move(difference));
    }
    return differences;
}

// -- writing

bool StagedRows::Write()
{
    if (!WrittenMeanwhile(1).empty())
        return false;
    const std::string target = Quoted(table->name);
    if (changed > 0) {
        std::string settings;
        for (std::size_t field = 0; field < columns.size(); ++field) {
            if (isChanged[field]) // an index over none of these fields isn't touched
                settings += (settings.empty() ? "" : ",") + Name(field) + "=c.n" + std::to_string(field);
        }
        direct.Change("update main." + target + " set " + settings + " from " + changedRows + " c where " + target +
                      "." + table->key + "=c.k");
    }
    if (fresh > 0)
        direct.Change("insert into main." + target + " select * from " + (isSorted ? sortedRows : freshRows));
    if (noted > 0) {
        std::string fields = table->key;
        for (const std::string& field : notedFields)
            fields += "," + field;
        direct.Change("insert or replace into main." + notes + " (" + fields + ") select * from " + notedRows);
    }
    return true;
}

std::vector<Key> StagedRows::WrittenMeanwhile(int most) const
{
    const std::string target = "main." + Quoted(table->name);
    const std::string isAsBefore = ForEachField(
        " and ", [this](std::size_t field) { return "t." + Name(field) + " is c.o" + std::to_string(field); });
    std::string select = "select s." + table->key + " from " + freshRows + " s where exists (select 1 from " + target +
                         " t where t." + table->key + "=s." + table->key + ")";
    if (changed > 0)
        select += " union all select c.k from " + changedRows + " c left join " + target + " t on t." + table->key +
                  "=c.k where t." + table->key + " is null or not (" + isAsBefore + ")";
    Rows rows = direct.Select(select + " limit " + std::to_string(most));
    std::vector<Key> keys;
    while (rows.Step())
        keys.push_back(Key(rows.Row().WholeAt(0)));
    return keys;
}

} // namespace dao
