#include "core/Identif.h"

#include "core/PPRT.h"
#include "support/ChildProcess.h"
#include "support/ScreenTest.h"

#include <QTcpServer>
#include <QTcpSocket>

using core::Identif;
using core::PPRT;

namespace {

class Identification : public tests::ScreenTest<Identif> {
protected:
    Identif& OpenScreen()
    {
        if (!core::TheDatabase.IsOpen())
            practice.Open();
        return desk.Open<Identif>();
    }

    QString Stored()
    {
        return tests::RowsOf(practice, "select Registre, Id_Fiscale, Article, Telephone, Fax, Compte, Agence, RIB, RC "
                                       "from Permn")
            .join("//");
    }
};

} // namespace

TEST_F(Identification, SavesEachIdentifierTrimmedAtMaximumLength)
{
    practice.Write("delete from Permn");
    auto& screen = OpenScreen();
    EXPECT_EQ(screen.windowTitle() + screen.SSPanel1.Caption(), " Identification");
    EXPECT_EQ(tests::TextsOf(screen.Text1), QStringList(8, ""));
    EXPECT_EQ(Stored(), " | | | | | | | |-"); // the missing row was made
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    practice.Write("Update Permn set RC = 'OUI'"); // by another program
    for (int field = 0; field < Identif::Identifiers; ++field) {
        EXPECT_TRUE(screen.Text1[field].hasFocus());
        Type(screen.Text1[field], QString(31, QChar('A' + field)));
        Press(screen.Text1[field], field % 2 == 0 ? Qt::Key_Down : Qt::Key_Return);
    }
    EXPECT_TRUE(screen.Text1[0].hasFocus()); // Enter wraps around; arrows stop at the ends
    Press(screen.Text1[0], Qt::Key_Up);
    EXPECT_TRUE(screen.Text1[0].hasFocus());
    Press(screen.Text1[7], Qt::Key_Down);
    EXPECT_TRUE(screen.Text1[7].hasFocus());
    Press(screen.Text1[7], Qt::Key_Up);
    EXPECT_TRUE(screen.Text1[6].hasFocus());
    screen.Text1[2].setText(" 123 ");
    Click(screen.Image1[Identif::Accept]);
    EXPECT_FALSE(screen.isVisible());

    QStringList saved;
    for (int field = 0; field < Identif::Identifiers; ++field)
        saved << (field == 2 ? QString("123") : QString(field == 7 ? 30 : 20, QChar('A' + field)));
    EXPECT_EQ(Stored(), saved.join('|') + "|OUI");
    EXPECT_EQ(tests::TextsOf(OpenScreen().Text1), saved);
}

TEST_F(Identification, SavesOnlyWhatWasChangedAndAccepted)
{
    const struct {
        const char* typed;
        Identif::Way way;
        const char* stored;
    } rows[] = {{"avant", Identif::Accept, "entre-temps"}, // changed back
                {"après", Identif::Leave, "entre-temps"},
                {"avant ", Identif::Accept, "avant"}}; // a blank counts as a change, and is trimmed
    for (const auto& row : rows) {
        practice.Write("Update Permn set Registre = 'avant'");
        auto& screen = OpenScreen();
        Type(screen.Text1[0], "après");
        screen.Text1[0].setText(row.typed);
        Press(screen.Text1[0], Qt::Key_Escape);
        EXPECT_TRUE(screen.isVisible());
        practice.Write("Update Permn set Registre = 'entre-temps'"); // a save overwrites it
        core::DialogResult = core::ResultDone;                       // as a calendar leaves it
        Click(screen.Image1[row.way]);
        EXPECT_FALSE(screen.isVisible());
        EXPECT_EQ(practice.Ask("select Registre from Permn").Text(), row.stored) << row.typed;
    }
}

namespace {

/// An attribute of the Internet Printing Protocol.
QByteArray Attribute(char type, const QByteArray& name, const QByteArray& value)
{
    const auto counted = [](const QByteArray& text) { return QByteArray(1, '\0') + char(text.size()) + text; };
    return type + counted(name) + counted(value);
}

void Answer(QTcpSocket& client, const QStringList& printers)
{
    QByteArray request;
    while (!request.endsWith('\3') && client.waitForReadyRead()) { // the end of the attributes
        request += client.readAll();
        if (request.endsWith("\r\n\r\n"))
            client.write("HTTP/1.1 100 Continue\r\n\r\n");
    }
    const qsizetype head = request.indexOf("\r\n\r\n") + 4;
    QByteArray answer = QByteArray::fromHex("01010000") + request.mid(head + 4, 4) + '\1' +
                        Attribute('\x47', "attributes-charset", "utf-8") +
                        Attribute('\x48', "attributes-natural-language", "fr");
    for (const QString& printer : printers)
        answer += '\4' + Attribute('\x42', "printer-name", printer.toUtf8()) +
                  Attribute('\x45', "printer-uri-supported", "ipp://localhost/printers/" + printer.toUtf8());
    answer += '\3';
    client.write("HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\nConnection: close\r\nContent-Length: " +
                 QByteArray::number(answer.size()) + "\r\n\r\n" + answer);
    client.disconnectFromHost();
    if (client.state() != QAbstractSocket::UnconnectedState)
        client.waitForDisconnected();
}

/// A print server that answers every request with these printers.
void ServePrinters(const QStringList& printers, tests::Reports& reports)
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    reports.Send(server.serverPort());
    while (server.waitForNewConnection(-1))
        Answer(*server.nextPendingConnection(), printers);
}

} // namespace

TEST(Printers, AreListedAndAcceptedByTheirPictureOnly)
{
    tests::ChildProcess server([](tests::Reports& reports) { ServePrinters({"Accueil", "Cabinet"}, reports); });
    qputenv("CUPS_SERVER", "127.0.0.1:" + QByteArray::number(server.Next<quint16>().value_or(0)));
    ScriptedDesk desk;
    for (const int way : {int(PPRT::Accept), int(PPRT::Cancel), -1}) {
        auto& screen = desk.Open<PPRT>();
        EXPECT_EQ(screen.SSPanel1.Caption(), "Imprimante par défaut");
        ASSERT_EQ(screen.Combo1.count(), 2);
        EXPECT_EQ(screen.Combo1.itemText(0) + screen.Combo1.itemText(1), "AccueilCabinet");
        EXPECT_EQ(screen.Combo1.currentIndex(), 0);
        EXPECT_EQ(AccessibilityFaults(screen), QStringList());
        if (way == PPRT::Accept)
            desk.ExpectMessage("OK", forms::Icon::None, "");
        if (way < 0)
            Press(screen.Combo1, Qt::Key_Escape);
        else
            Click(screen.Image1[way]);
        EXPECT_FALSE(screen.isVisible());
    }
    server.Kill();
    qunsetenv("CUPS_SERVER");
}
