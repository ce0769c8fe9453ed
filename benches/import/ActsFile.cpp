#include "import/ActsFile.h"

#include "data/Practice.h"
#include "platform/host/Files.h"
#include "support/Floor.h"

#include <QFile>
#include <random>

namespace bench {
namespace {

constexpr int ActsOfADay = 100;

} // namespace

std::vector<Act> ActsInOrder(int count)
{
    std::mt19937 random(20080617);
    std::vector<Act> acts;
    for (int i = 0; i < count; ++i)
        acts.push_back({.key = i + 1,
                        .day = QDate(2000, 1, 1).addDays(i / ActsOfADay),
                        .patient = std::uniform_int_distribution(1, 20'000)(random),
                        .service = std::uniform_int_distribution(1, 10)(random),
                        .amount = 500 + 0.25 * std::uniform_int_distribution(0, 8000)(random)});
    return acts;
}

int SlotOf(const Act& act)
{
    return act.key % 10;
}

QString TimeOf(const Act& act)
{
    return QString("%1:%2").arg(8 + SlotOf(act), 2, 10, QChar('0')).arg(act.key % 60, 2, 10, QChar('0'));
}

int PaymentOf(const Act& act)
{
    return act.key % 6;
}

QString CodeOf(const Act& act)
{
    return QString("K%1").arg(act.key % 31);
}

void WriteCsv(const QString& path, const std::vector<Act>& acts)
{
    QFile file(path);
    Require(file.open(QIODevice::WriteOnly), "no file " + path);
    file.write("num;Date;date_Presta;HH;Heure;num_patient;num_presta;montant;Type;flag_R;Flag_H\r\n");
    for (const Act& act : acts) {
        const QString day = act.day.toString("dd/MM/yyyy");
        const QStringList cells{QString::number(act.key),
                                day,
                                day,
                                QString::number(SlotOf(act)),
                                TimeOf(act),
                                QString::number(act.patient),
                                QString::number(act.service),
                                QString::number(act.amount, 'f', 2).replace('.', ','),
                                CodeOf(act),
                                QString::number(PaymentOf(act)),
                                "0"};
        file.write(cells.join(';').toUtf8() + "\r\n");
    }
}

void InsertPlainly(const QString& folder, const std::vector<Act>& acts)
{
    PlainDatabase plain(host::PathIn(folder, data::DatabaseFile));
    plain.Run("begin immediate");
    PlainStatement insert(plain,
                          "insert into Actes (num, Date, MM, AA, date_Presta, HH, Heure, num_patient, num_presta, "
                          "montant, Type, flag_R, Flag_H) values (?,?,?,?,?,?,?,?,?,?,?,?,0)");
    for (const Act& act : acts) {
        const QString day = act.day.toString(Qt::ISODate);
        insert.Bind(1, act.key).Bind(2, day).Bind(3, act.day.month()).Bind(4, act.day.year()).Bind(5, day);
        insert.Bind(6, SlotOf(act)).Bind(7, TimeOf(act)).Bind(8, act.patient).Bind(9, act.service);
        insert.Bind(10, act.amount).Bind(11, CodeOf(act)).Bind(12, PaymentOf(act));
        insert.Run();
    }
    plain.Run("commit");
}

} // namespace bench
