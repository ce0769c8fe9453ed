#include "core/Identif.h"

#include "core/PPRT.h"
#include "core/globals.h"
#include "support/Accessibility.h"
#include "support/ChildProcess.h"
#include "support/Practice.h"
#include "support/Rows.h"
#include "support/ScriptedDesk.h"

#include <QRegularExpression>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>

using core::Identif;
using core::PPRT;
using forms::Icon;

namespace {

class Identification : public testing::Test {
protected:
    Identif& OpenScreen()
    {
        if (!core::TheDatabase.IsOpen())
            practice.Open();
        return desk.Open<Identif>();
    }

    QString Stored()
    {
        return tests::RowsOf(practice,
                             "select Registre, Id_Fiscale, Article, Telephone, Fax, Compte, Agence, RIB from Permn")
            .join("//");
    }

    static QStringList Texts(Identif& screen)
    {
        QStringList texts;
        for (int field = 0; field < Identif::Identifiers; ++field)
            texts << screen.Text1[field].text();
        return texts;
    }

    tests::Practice practice;
    ScriptedDesk desk;
};

} // namespace

TEST_F(Identification, MakesTheRowOfAPracticeThatLacksIt)
{
    practice.Write("delete from Permn");
    auto& screen = OpenScreen();
    EXPECT_EQ(screen.windowTitle(), " ");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Identification");
    EXPECT_EQ(Texts(screen).join(""), "");
    EXPECT_EQ(Stored(), " | | | | | | | ");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    ASSERT_TRUE(screen.Text1[0].hasFocus());
    Click(screen.Image1[Identif::Accept]);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(Stored(), " | | | | | | | "); // nothing was changed
}

TEST_F(Identification, SavesEachIdentifierTrimmedAtMaximumLength)
{
    practice.Write("Update Permn set RC = 'OUI', Charge1 = 5, Fax = Null");
    auto& screen = OpenScreen();
    for (int field = 0; field < Identif::Identifiers; ++field)
        Type(screen.Text1[field], QString(31, QChar('A' + field)));
    EXPECT_EQ(Texts(screen).last(), QString(30, 'H'));
    screen.Text1[2].setText(" 123 ");
    Click(screen.Image1[Identif::Accept]);
    EXPECT_FALSE(screen.isVisible());
    QStringList expected;
    for (int field = 0; field < 7; ++field)
        expected << (field == 2 ? QString("123") : QString(20, QChar('A' + field)));
    EXPECT_EQ(Stored(), expected.join('|') + "|" + QString(30, 'H'));
    EXPECT_EQ(tests::RowsOf(practice, "select RC, Charge1 from Permn"), QStringList("OUI|5"));

    auto& again = OpenScreen();
    EXPECT_EQ(Texts(again), QStringList(expected) << QString(30, 'H'));
}

TEST_F(Identification, SavesNothingThatWasChangedBackOrCancelled)
{
    practice.Write("Update Permn set Registre = 'avant'");
    auto& screen = OpenScreen();
    Type(screen.Text1[0], "après");
    screen.Text1[0].setText("avant");
    practice.Write("Update Permn set Registre = 'entre-temps'"); // a save would overwrite it
    Click(screen.Image1[Identif::Accept]);
    EXPECT_EQ(core::DialogResult, 0);
    EXPECT_EQ(tests::RowsOf(practice, "select Registre from Permn"), QStringList("entre-temps"));

    auto& givenUp = OpenScreen();
    Type(givenUp.Text1[0], "après");
    Press(givenUp.Text1[0], Qt::Key_Escape);
    EXPECT_TRUE(givenUp.isVisible());
    Click(givenUp.Image1[Identif::Leave]);
    EXPECT_FALSE(givenUp.isVisible());
    EXPECT_EQ(tests::RowsOf(practice, "select Registre from Permn"), QStringList("entre-temps"));

    auto& blanks = OpenScreen();
    blanks.Text1[1].setText("  "); // counts as a change; saved trimmed
    Click(blanks.Image1[Identif::Accept]);
    EXPECT_EQ(core::DialogResult, 1);
    EXPECT_EQ(tests::RowsOf(practice, "select Registre, Id_Fiscale from Permn"), QStringList("entre-temps|"));
}

TEST_F(Identification, MovesThroughItsFieldsByEnterAndArrows)
{
    auto& screen = OpenScreen();
    Press(screen.Text1[0], Qt::Key_Up); // stops at the ends
    EXPECT_TRUE(screen.Text1[0].hasFocus());
    Press(screen.Text1[0], Qt::Key_Down);
    EXPECT_TRUE(screen.Text1[1].hasFocus());
    Press(screen.Text1[1], Qt::Key_Return);
    EXPECT_TRUE(screen.Text1[2].hasFocus());
    Press(screen.Text1[2], Qt::Key_Up);
    EXPECT_TRUE(screen.Text1[1].hasFocus());
    Press(screen.Text1[7], Qt::Key_Down);
    EXPECT_TRUE(screen.Text1[7].hasFocus());
    screen.Text1[0].setText("16/00");
    Press(screen.Text1[7], Qt::Key_Return); // and Enter wraps around
    EXPECT_TRUE(screen.Text1[0].hasFocus());
    EXPECT_EQ(screen.Text1[0].selectedText(), "16/00");
}

namespace {

/// A print server with these printers, in a process of its own: it answers every request with them all.
class PrintServer {
public:
    explicit PrintServer(const QStringList& printers)
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(::listen(listener, 5), 0);
        ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
        qputenv("CUPS_SERVER", "127.0.0.1:" + QByteArray::number(ntohs(address.sin_port)));
        server.emplace([this, printers](tests::Reports&) {
            for (;;)
                Answer(::accept(listener, nullptr, nullptr), printers);
        });
    }
    ~PrintServer()
    {
        server->Kill();
        ::close(listener);
        qunsetenv("CUPS_SERVER");
    }
    Q_DISABLE_COPY_MOVE(PrintServer)

private:
    /// An attribute of the Internet Printing Protocol.
    static QByteArray Attribute(char type, const QByteArray& name, const QByteArray& value)
    {
        const auto counted = [](const QByteArray& text) {
            return QByteArray(1, '\0') + static_cast<char>(text.size()) + text;
        };
        return type + counted(name) + counted(value);
    }

    static QByteArray Received(int connection)
    {
        char bytes[4096];
        return {bytes, qMax(::recv(connection, bytes, sizeof bytes, 0), ssize_t{0})};
    }

    static void Answer(int connection, const QStringList& printers)
    {
        QByteArray request;
        while (!request.contains("\r\n\r\n"))
            request += Received(connection);
        const qsizetype head = request.indexOf("\r\n\r\n") + 4;
        if (request.contains("100-continue"))
            ::send(connection, "HTTP/1.1 100 Continue\r\n\r\n", 25, 0);
        static const QRegularExpression length("Content-Length: (\\d+)");
        while (request.size() < head + length.match(QString::fromLatin1(request)).captured(1).toInt())
            request += Received(connection);

        QByteArray answer = QByteArray::fromHex("01010000") + request.mid(head + 4, 4) + '\1' +
                            Attribute('\x47', "attributes-charset", "utf-8") +
                            Attribute('\x48', "attributes-natural-language", "fr");
        for (const QString& printer : printers)
            answer += '\4' + Attribute('\x42', "printer-name", printer.toUtf8()) +
                      Attribute('\x45', "printer-uri-supported", "ipp://localhost/printers/" + printer.toUtf8());
        answer += '\3';
        answer = "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\nConnection: close\r\nContent-Length: " +
                 QByteArray::number(answer.size()) + "\r\n\r\n" + answer;
        ::send(connection, answer.constData(), static_cast<size_t>(answer.size()), 0);
        ::close(connection);
    }

    const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
    std::optional<tests::ChildProcess> server;
};

} // namespace

TEST(Printers, AreListedAndAcceptedByTheirPictureOnly)
{
    const QStringList printers{"Accueil", "Cabinet"};
    const PrintServer server(printers);
    ScriptedDesk desk;
    for (const int way : {int(PPRT::Accept), int(PPRT::Cancel), -1}) {
        auto& screen = desk.Open<PPRT>();
        EXPECT_EQ(screen.SSPanel1.Caption(), "Imprimante par défaut");
        QStringList listed;
        for (int printer = 0; printer < screen.Combo1.count(); ++printer)
            listed << screen.Combo1.itemText(printer);
        EXPECT_EQ(listed, printers);
        EXPECT_EQ(screen.Combo1.currentIndex(), 0);
        EXPECT_EQ(AccessibilityFaults(screen), QStringList());
        if (way == PPRT::Accept)
            desk.ExpectMessage("OK", Icon::None, "");
        if (way < 0)
            Press(screen.Combo1, Qt::Key_Escape);
        else
            Click(screen.Image1[way]);
        EXPECT_FALSE(screen.isVisible());
    }
}
