#include "core/configuration.h"

#include "core/globals.h"
#include "data/ConfigurationFile.h"
#include "data/Practice.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"

#include <QFile>

using basic::FixedText;
using basic::Int16;

namespace core {

namespace {

constexpr int ConfigLineWidth = 40;
constexpr int AlternativeSet = 1;

std::array<QString, data::LetterheadFields> Letterhead;
Int16 AccessValue;
Int16 LetterheadSelector; ///< 1 selects the alternative set; nothing sets it

QString& Stored(int field)
{
    if (field < 1 || field > data::LetterheadFields)
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    return Letterhead[static_cast<std::size_t>(field - 1)];
}

void StoreLetterheadField(int field, const QString& text)
{
    Stored(field) = FixedText(text, data::LetterheadWidths[static_cast<std::size_t>(field - 1)]);
}

QByteArray Record(const QByteArray& file, int number)
{
    return file.mid(static_cast<qsizetype>(number - 1) * data::ConfigRecordBytes, data::ConfigRecordBytes);
}

/// The decoded text of a record; empty if it can't be decoded.
QString ReadConfigField(const QByteArray& record)
{
    try {
        return data::DecodeConfigRecord(record);
    } catch (const basic::RuntimeError&) {
        return {};
    }
}

} // namespace

void LoadConfiguration()
{
    ConfigPath = host::PathIn(DataFolder, data::ConfigurationFile);
    QFile file(ConfigPath);
    QByteArray content;
    if (file.open(QIODevice::ReadOnly))
        content = file.read(static_cast<qint64>(data::ConfigRecordCount) * data::ConfigRecordBytes);
    TakeConfiguration(content);
}

void TakeConfiguration(const QByteArray& content)
{
    const QByteArray header = Record(content, data::ConfigHeaderRecord);
    LanguageMode = data::ConfigWord(header, data::ConfigLanguageWord) == Arabic ? Arabic : True;
    AccessValue = data::ConfigWord(header, data::ConfigAccessWord);

    for (int field = 1; field <= data::LetterheadFields; ++field) {
        QString& line = ConfigLines[static_cast<std::size_t>(field - 1)];
        line = FixedText(ReadConfigField(Record(content, data::LetterheadRecord(field))), ConfigLineWidth);
        StoreLetterheadField(field, line);
    }
}

Int16 StoredAccessValue()
{
    return AccessValue;
}

QString LetterheadField(int field)
{
    return Stored(field);
}

QString TrimLetterheadField(int field)
{
    const QString trimmed = Stored(field).trimmed();
    StoreLetterheadField(field, trimmed);
    return trimmed;
}

void WriteTextesFromConfig()
{
    const int before = LetterheadSelector == AlternativeSet ? data::LetterheadFields / 2 : 0;

    TextesTable.MoveFirst();
    TextesTable.LockEdits(true);
    TextesTable.Edit();
    TextesTable["ch1"] = TrimLetterheadField(before + 1);
    TextesTable["ch2"] = TrimLetterheadField(before + 2);
    TextesTable["ch3"] = TrimLetterheadField(before + 3);
    TextesTable["ch30"] = "(" + TrimLetterheadField(before + 4) + ")";
    TextesTable.Update();
    dao::DBEngine.Idle(dao::RefreshCache);
}

} // namespace core
