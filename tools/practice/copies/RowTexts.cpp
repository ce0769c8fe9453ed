#include "practice/copies/RowTexts.h"

#include "data/PaymentCode.h"
#include "platform/basic/Numbers.h"

#include <QHash>
#include <QLocale>
#include <QRegularExpression>

namespace practice {
namespace {

bool IsAmount(const QString& field)
{
    static const QRegularExpression amount("^(montant|prix|charge\\d)$", QRegularExpression::CaseInsensitiveOption);
    return amount.match(field).hasMatch();
}

} // namespace

QString AmountText(double dinars)
{
    const QString text = basic::Format(dinars, "# ### ##0.00").trimmed();
    return text.startsWith('-') ? "-" + text.sliced(1).trimmed() : text; // removes the blanks of the mask
}

QString DayText(const QDate& day)
{
    return QLocale(QLocale::French).toString(day, "dddd dd/MM/yyyy");
}

QString FieldTitle(const QString& field)
{
    static const QHash<QString, QString> titles{
        {"flag_r", "règlement"},    {"flag_h", "archivé"},    {"num_patient", "patient n°"},
        {"num_presta", "unité n°"}, {"hh", "créneau"},        {"date_presta", "date prévue"},
        {"prenom", "prénom"},       {"naiss", "naissance"},   {"n_carte", "n° carte"},
        {"denom", "nom"},           {"objet", "objet"},       {"date", "date"},
        {"tel", "téléphone"},       {"diagno", "diagnostic"}, {"date_suppr", "supprimé le"},
        {"h_suppr", "supprimé à"}};
    return titles.value(field.toLower(), field);
}

QString FieldText(const QString& field, const store::Value& value)
{
    if (value.IsNull())
        return "vide";
    const bool isText = std::holds_alternative<QString>(value.Raw());
    if (isText) {
        const QDate day = QDate::fromString(value.Text(), Qt::ISODate);
        return day.isValid() && value.Text().size() == 10 ? day.toString("dd/MM/yyyy") : value.Text();
    }
    if (IsAmount(field))
        return AmountText(value.Double());
    const QStringList codes = data::PaymentCodes();
    if (field.compare("flag_R", Qt::CaseInsensitive) == 0 && value.Double() >= 0 &&
        value.Double() < double(codes.size()))
        return codes[int(value.Double())].trimmed();
    return basic::PlainText(value.Double());
}

QString LastActText(const store::DatabaseReader& reader)
{
    store::Statement select =
        reader.Select("select num, Date, (select trim(coalesce(nom, '') || ' ' || coalesce(Prenom, '')) from Patients "
                      "where Patients.num = num_patient) from Actes order by num desc limit 1");
    if (!select.Step())
        return "aucun";
    const QString name = QString::fromStdString(select.TextAt(2));
    const QDate day = QDate::fromString(QString::fromStdString(select.TextAt(1)), Qt::ISODate);
    return QString("n° %1%2%3")
        .arg(select.WholeAt(0))
        .arg(day.isValid() ? " du " + day.toString("dd/MM/yyyy") : QString(),
             name.isEmpty() ? QString() : " (" + name + ")");
}

} // namespace practice
