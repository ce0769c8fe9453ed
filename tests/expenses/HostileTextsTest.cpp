#include "expenses/F_Dep.h"

#include "platform/store/DatabaseReader.h"
#include "support/Files.h"
#include "support/Practice.h"
#include "support/Rows.h"
#include "support/ScriptedDesk.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QJsonArray>
#include <QJsonDocument>

using expenses::EntryPanel;
using expenses::F_Dep;
using forms::Icon;

namespace {

/// The text as accepted by a one-line field: control characters become blanks, trailing line breaks and a leading byte
/// order mark are dropped.
QString InOneLine(QString text)
{
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    while (text.endsWith('\n') || text.endsWith('\r'))
        text.chop(1);
    for (QChar& character : text)
        if (character < ' ' || character == QChar::LineSeparator || character == QChar::ParagraphSeparator)
            character = ' ';
    return text.trimmed();
}

/// Replaces the text of a field as an input method does.
void Enter(QWidget& field, const QString& text)
{
    Press(field, Qt::Key_A, Qt::ControlModifier);
    Press(field, Qt::Key_Delete);
    QInputMethodEvent entered;
    entered.setCommitString(text);
    QApplication::sendEvent(&field, &entered);
}

} // namespace

TEST(HostileTexts, AreStoredVerbatimWithoutSideEffects)
{
    tests::Practice practice;
    ScriptedDesk desk;
    practice.Open();
    const QStringList before = tests::RowsOf(practice, "select * from Patients");
    auto& screen = desk.Open<F_Dep>();

    const QJsonArray texts = QJsonDocument::fromJson(tests::BytesOf(HOSTILE_TEXTS)).array();
    ASSERT_GT(texts.size(), 300);
    QStringList saved;
    for (const QJsonValue& each : texts) {
        const QString text = each.toString();
        if (!screen.SSPanel3.isVisible())
            screen.Crecettes[F_Dep::New].click();
        screen.SSPanel3.Date.setText("17/06/2008");
        Enter(screen.SSPanel3.Object, text);
        screen.SSPanel3.Amount.setText("1");
        const QString object = InOneLine(text);
        EXPECT_EQ(screen.SSPanel3.Object.text().trimmed(), object);
        if (object.isEmpty())
            desk.ExpectMessage("saisie incomplète", Icon::Critical, "ATTENTION");
        else
            desk.ExpectMessage("Enregistrement terminé", Icon::Information, "ZEP Lumo");
        screen.SSPanel3.Image2[EntryPanel::Accept].click();
        if (!object.isEmpty())
            saved << object;
    }
    if (screen.SSPanel3.isVisible())
        Press(screen, Qt::Key_Escape);

    dao::Recordset rows = practice.Rows("select objet from Recettes order by num");
    screen.Image2_Click(core::PeriodChooser::AcceptDay); // reads them again
    ASSERT_EQ(screen.Grid1.Rows(), saved.size());
    for (int row = 0; row < saved.size(); ++row, rows.MoveNext()) {
        EXPECT_EQ(rows["objet"].Text(), saved[row]);
        EXPECT_EQ(screen.Grid1.Text(row, F_Dep::Object), " " + saved[row]);
    }
    EXPECT_TRUE(rows.IsEOF());
    EXPECT_EQ(tests::RowsOf(practice, "select * from Patients"), before);
    EXPECT_EQ(store::CheckDatabase(practice.File("ZEP_ONE.MDB")), QStringList());
}
