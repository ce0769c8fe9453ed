#include "core/PPRT.h"
#include "support/ChildProcess.h"
#include "support/ScreenTest.h"

#include <QTcpServer>
#include <QTcpSocket>

using core::PPRT;

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
