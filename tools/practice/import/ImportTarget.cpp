#include "practice/import/ImportTarget.h"

#include "data/Practice.h"
#include "platform/dao/StagedRows.h"

#include <QHash>
#include <algorithm>

namespace practice {
namespace {

constexpr int MostNamed = 1000;

/// A table whose rows have keys.
class KeyedTarget : public ImportTarget {
public:
    KeyedTarget(dao::Database target, const TableRule& rule, bool updatesRows)
        : database(std::move(target)), table(rule), updates(updatesRows)
    {
    }

    void Begin(const QStringList& fields) override
    {
        rows = std::make_unique<dao::StagedRows>(database, QLatin1String(table.name), fields);
        keyPosition = static_cast<std::size_t>(fields.indexOf("num"));
        if (qstrcmp(table.name, "Actes") == 0)
            rows->AlsoNote({"flag_R", "montant"}, data::KeptSettlements);
    }

    QString Add(const std::vector<store::Value>& values, qint64 line) override
    {
        const dao::Key key = values[keyPosition].Long();
        if (!rows->Add(values))
            return QString("num : la clé %1 est déjà celle de la ligne %2").arg(key).arg(lineOfKey.value(key));
        lineOfKey.insert(key, line);
        return {};
    }

    void Compare(Problems& problems) override
    {
        rows->Compare();
        counts.added = rows->Fresh();
        counts.same = rows->Same();
        counts.changed = rows->Changed();
        counts.noted = rows->Noted();
        if (updates || rows->Changed() == 0)
            return;
        const std::vector<dao::StagedRows::Difference> differences = rows->Differences(MostNamed);
        for (const auto& [key, fields] : differences)
            problems.Add(lineOfKey.value(key), QString("num : la clé %1 existe déjà dans %2 avec d'autres valeurs (%3)")
                                                   .arg(key)
                                                   .arg(QLatin1String(table.name), fields.join(", ")));
        for (int unnamed = static_cast<int>(differences.size()); unnamed < rows->Changed(); ++unnamed)
            problems.Add(0, "D'autres lignes existent déjà avec d'autres valeurs.");
    }

    void Write(Problems& problems) override
    {
        if (rows->Write())
            return;
        for (const dao::Key key : rows->WrittenMeanwhile(MostNamed))
            problems.Add(lineOfKey.value(key),
                         QString("num : la ligne %1 de %2 vient d'être écrite par un autre programme")
                             .arg(key)
                             .arg(QLatin1String(table.name)));
    }

private:
    dao::Database database;
    const TableRule& table;
    bool updates;
    std::unique_ptr<dao::StagedRows> rows;
    std::size_t keyPosition = 0;
    QHash<dao::Key, qint64> lineOfKey;
};

/// A table of one row.
class SingleRowTarget : public ImportTarget {
public:
    SingleRowTarget(dao::Database target, const TableRule& rule, bool updatesRow)
        : database(std::move(target)), table(rule), updates(updatesRow)
    {
    }

    void Begin(const QStringList& fieldNames) override { fields = fieldNames; }

    QString Add(const std::vector<store::Value>& values, qint64 /*line*/) override
    {
        if (!given.empty())
            return QString("%1 n'a qu'une ligne").arg(QLatin1String(table.name));
        given = values;
        return {};
    }

    void Compare(Problems& /*problems*/) override
    {
        if (given.empty())
            return;
        present = Present();
        const QStringList differing = DifferingFields();
        if (present.empty())
            counts.added = 1;
        else if (differing.isEmpty())
            counts.same = 1;
        else if (updates)
            counts.changed = 1;
        else
            counts.left = 1;
        counts.leftFields = counts.left > 0 ? differing : QStringList();
    }

    void Write(Problems& problems) override
    {
        if (counts.added + counts.changed == 0)
            return;
        if (!AreSame(present, Present())) {
            problems.Add(
                0,
                QString("La ligne de %1 vient d'être écrite par un autre programme.").arg(QLatin1String(table.name)));
            return;
        }
        dao::Recordset row = database.OpenRecordset(QLatin1String(table.name));
        counts.added > 0 ? row.AddNew() : row.Edit();
        for (std::size_t field = 0; field < given.size(); ++field) {
            if (present.empty() || !IsSame(present[field], given[field]))
                row.Collect(fields[static_cast<qsizetype>(field)]) = given[field];
        }
        row.Update();
    }

private:
    /// The stored values of the given fields; none if the table has no row.
    std::vector<store::Value> Present() const
    {
        std::vector<store::Value> values;
        const dao::Recordset row = database.OpenRecordset(QLatin1String(table.name));
        for (qsizetype field = 0; field < fields.size() && !row.IsEOF(); ++field)
            values.push_back(row.Collect(fields[field]).Get());
        return values;
    }

    QStringList DifferingFields() const
    {
        QStringList differing;
        for (std::size_t field = 0; field < present.size(); ++field) {
            if (!IsSame(present[field], given[field]))
                differing << fields[static_cast<qsizetype>(field)];
        }
        return differing;
    }

    /// A blank text equals Null: the program stores one blank in fields that were left empty.
    static bool IsSame(const store::Value& left, const store::Value& right)
    {
        const auto text = [](const store::Value& value) { return value.IsNull() ? QString() : value.Text().trimmed(); };
        return text(left) == text(right);
    }

    static bool AreSame(const std::vector<store::Value>& left, const std::vector<store::Value>& right)
    {
        return std::ranges::equal(left, right, IsSame);
    }

    dao::Database database;
    const TableRule& table;
    bool updates;
    QStringList fields;
    std::vector<store::Value> given;
    std::vector<store::Value> present;
};

} // namespace

std::unique_ptr<ImportTarget> MakeImportTarget(const dao::Database& database, const TableRule& rule, bool updates)
{
    if (rule.hasOneRow)
        return std::make_unique<SingleRowTarget>(database, rule, updates);
    return std::make_unique<KeyedTarget>(database, rule, updates);
}

} // namespace practice
