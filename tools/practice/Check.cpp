#include "practice/Check.h"

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"
#include "practice/FieldRules.h"
#include "practice/PracticeData.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QSet>

namespace practice {
namespace {

using Keys = QSet<dao::Key>;

/// A kind of fault in one table: how many rows have it and the first of their keys.
class Findings {
public:
    void Note(const QString& fault, dao::Key key)
    {
        auto& rows = found[fault];
        ++rows.count;
        if (rows.examples.size() < 5)
            rows.examples << QString::number(key);
    }

    QStringList Lines(const QString& table) const
    {
        QStringList lines;
        for (const auto& [fault, rows] : found.asKeyValueRange())
            lines << QString("%1 : %2 (%3 ligne%4, num %5%6)")
                         .arg(table, fault, QString::number(rows.count), rows.count > 1 ? "s" : "",
                              rows.examples.join(", "), rows.count > rows.examples.size() ? "…" : "");
        return lines;
    }

private:
    struct Rows {
        int count = 0;
        QStringList examples;
    };
    QMap<QString, Rows> found;
};

class FolderCheck {
public:
    explicit FolderCheck(const QString& path) : folder(path) {}

    CheckReport Run()
    {
        if (!QFileInfo(folder).isDir()) {
            report.failures << QString("Le dossier « %1 » n'existe pas.").arg(folder);
            return report;
        }
        CheckConfiguration();
        CheckFile();
        if (!report.failures.isEmpty())
            return report;
        Guarded("Base de données", [this] { CheckContent(); });
        return report;
    }

private:
    /// Runs a step; a run-time error of it becomes a failure of the report.
    template <typename Step>
    void Guarded(const QString& subject, Step step)
    {
        try {
            step();
        } catch (const basic::RuntimeError& error) {
            report.failures
                << QString("%1 : erreur %2, %3").arg(subject, QString::number(error.Number()), error.Description());
        }
    }

    bool Exists(const QString& name)
    {
        if (QFileInfo(host::PathIn(folder, name)).isFile())
            return true;
        report.failures << QString("Le fichier %1 est absent.").arg(name);
        return false;
    }

    void CheckConfiguration()
    {
        if (!Exists(data::configurationFile))
            return;
        QFile file(host::PathIn(folder, data::configurationFile));
        if (!file.open(QIODevice::ReadOnly)) {
            report.failures << QString("%1 ne peut pas être lu : %2").arg(data::configurationFile, file.errorString());
            return;
        }
        const QByteArray bytes = file.readAll();
        if (bytes.size() < data::configRecordCount * data::configRecordBytes) {
            report.failures << QString("%1 est trop court : %2 octets au lieu de %3.")
                                   .arg(data::configurationFile)
                                   .arg(bytes.size())
                                   .arg(data::configRecordCount * data::configRecordBytes);
            return;
        }
        Guarded(data::configurationFile, [&] { CheckRecords(bytes); });
    }

    void CheckRecords(const QByteArray& bytes)
    {
        const auto record = [&bytes](int number) {
            return bytes.mid((number - 1) * data::configRecordBytes, data::configRecordBytes);
        };
        QStringList lines;
        for (int field = 1; field <= data::letterheadFields; ++field)
            lines << data::DecodeConfigRecord(record(data::LetterheadRecord(field))).trimmed();
        report.facts << QString("En-tête : %1").arg(lines.mid(0, 3).join(" / "));
        const int access = data::ConfigWord(record(data::configHeaderRecord), data::configAccessWord);
        if (access < -16384 || access > 16383)
            report.failures << QString("%1 : la valeur d'accès %2 ne donne aucun code d'accès.")
                                   .arg(data::configurationFile)
                                   .arg(access);
    }

    void CheckFile()
    {
        const bool database = Exists(data::databaseFile);
        Exists(data::workgroupFile);
        if (!QFileInfo(host::PathIn(folder, data::archiveFolder)).isDir())
            report.remarks
                << QString("Le dossier %1 est absent : la copie de fin de travail échouera.").arg(data::archiveFolder);
        if (!database)
            return;
        Guarded(data::databaseFile, [this] {
            for (const QString& damage : dao::CheckDatabase(host::PathIn(folder, data::databaseFile)))
                report.failures << QString("%1 : %2").arg(data::databaseFile, damage);
        });
    }

    void CheckContent()
    {
        const PracticeData opened(folder);
        const dao::Database& database = opened.Database();
        CheckSingleRows(database);
        const Keys patients = CheckTable(database, "Patients", {}, {});
        const Keys services = ReadServices(database);
        for (const char* table : {"Actes", "Plani", "Actes_suppr"})
            CheckTable(database, table, patients, services);
        CountRows(database, "Recettes");
    }

    void CheckSingleRows(const dao::Database& database)
    {
        const auto rows = [&database](const char* table) {
            dao::Recordset set = database.OpenRecordset(table);
            if (!set.IsEOF())
                set.MoveLast();
            return set.RecordCount();
        };
        if (const int texts = rows("textes"); texts != 1)
            report.failures
                << QString("textes : %1 ligne(s) au lieu d'une, aucun état ne peut être imprimé.").arg(texts);
        for (const char* table : {"Permn", "Tarif"}) {
            if (const int count = rows(table); count > 1)
                report.failures << QString("%1 : %2 lignes au lieu d'une.").arg(table).arg(count);
        }
        if (const auto fields = database.TableDef("Prov").FieldCount(); fields < 5)
            report.failures << QString("Prov : %1 champs au lieu de 5 ou 6.").arg(fields);
    }

    Keys ReadServices(const dao::Database& database)
    {
        Keys keys;
        for (dao::Recordset rows = database.OpenRecordset("Presta"); !rows.IsEOF(); rows.MoveNext())
            keys << rows["num"].Key();
        report.facts << QString("Presta : %1 lignes").arg(keys.size());
        return keys;
    }

    void CountRows(const dao::Database& database, const char* table)
    {
        const dao::Recordset count = database.OpenRecordset(QString("select count(num) as S1 from %1").arg(table));
        report.facts << QString("%1 : %2 lignes").arg(table).arg(count["S1"].Long());
    }

    /// Walks one table once: codes out of range, types, fields that may not be Null, keys without a row.
    Keys CheckTable(const dao::Database& database, const char* name, const Keys& patients, const Keys& services)
    {
        const TableRule& rule = *FindTable(name);
        Findings wrong;
        Findings orphans;
        Keys keys;
        dao::Recordset rows = database.OpenRecordset(QLatin1String(name));
        const QList<int> positions = PositionsIn(database, rule);
        for (; !rows.IsEOF(); rows.MoveNext()) {
            const dao::Key key = rows["num"].Key();
            keys << key;
            for (std::size_t field = 0; field < rule.fields.size(); ++field) {
                const FieldRule& fieldRule = rule.fields[field];
                const dao::Value value = rows.Fields(positions[static_cast<qsizetype>(field)]).Get();
                NoteFault(wrong, fieldRule, value, key);
                if (fieldRule.kind == FieldKind::Reference && !value.IsNull()) {
                    const bool toPatient = qstricmp(fieldRule.name, "num_patient") == 0;
                    if (!(toPatient ? patients : services).contains(value.Long()))
                        orphans.Note(
                            QString("%1 sans ligne dans %2").arg(fieldRule.name, toPatient ? "Patients" : "Presta"),
                            key);
                }
            }
        }
        report.facts << QString("%1 : %2 lignes").arg(name).arg(keys.size());
        report.failures << wrong.Lines(name);
        report.remarks << orphans.Lines(name);
        return keys;
    }

    static QList<int> PositionsIn(const dao::Database& database, const TableRule& rule)
    {
        QStringList names = database.TableDef(QLatin1String(rule.name)).FieldNames();
        for (QString& name : names)
            name = name.toLower();
        QList<int> positions;
        for (const FieldRule& field : rule.fields) {
            const qsizetype position = names.indexOf(QString(field.name).toLower());
            if (position < 0)
                throw basic::RuntimeError(basic::Error::UnknownField);
            positions << static_cast<int>(position);
        }
        return positions;
    }

    static void NoteFault(Findings& wrong, const FieldRule& rule, const dao::Value& value, dao::Key key)
    {
        if (value.IsNull()) {
            if (rule.required)
                wrong.Note(QString("%1 sans valeur").arg(rule.name), key);
            return;
        }
        if (rule.kind == FieldKind::Code) {
            const qint32 code = value.Long();
            if (code < rule.lowest || code > rule.highest)
                wrong.Note(QString("%1 hors de l'intervalle %2 à %3").arg(rule.name).arg(rule.lowest).arg(rule.highest),
                           key);
        } else if (rule.kind == FieldKind::ActType && !IsActType(value.Text())) {
            wrong.Note(QString("%1 inconnu « %2 »").arg(rule.name, value.Text()), key);
        }
    }

    QString folder;
    CheckReport report;
};

} // namespace

CheckReport CheckPractice(const QString& folder)
{
    return FolderCheck(folder).Run();
}

} // namespace practice
