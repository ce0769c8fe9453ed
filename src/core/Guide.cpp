#include "core/Guide.h"

#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"

#include <QFile>
#include <QHash>
#include <QRegularExpression>

using namespace forms;

namespace core {

namespace {

constexpr auto ContentsPage = "index.md";

QUrl Address(const QString& page)
{
    return QUrl("qrc:/guide/" + page);
}

} // namespace

Guide::Guide(const QString& screen) : Form("Guide", "Guide"), firstPage(PageOf(screen))
{
    BuildForm();
    On(Back, &Picture::clicked, *this, [this] { Page.backward(); });
    On(Contents, &Picture::clicked, *this, [this] { Page.setSource(Address(ContentsPage)); });
    On(Close, &Picture::clicked, *this, &Guide::Unload);
    On(SearchNext, &Picture::clicked, *this, &Guide::FindNext);
    On(SearchText, &TextBox::Entered, *this, &Guide::FindNext);
    connect(&Page, &QTextBrowser::backwardAvailable, &Back, &QWidget::setEnabled);
}

void Guide::Form_Load()
{
    Centre();
    Back.setEnabled(false);
    Page.setSource(Address(firstPage));
    Page.setFocus();
}

QString Guide::PageOf(const QString& screen)
{
    static const QHash<QString, QString> pages{
        {"Auteur", "ouvrir.md"},
        {"New_Act", "actes-visibles.md"},
        {"New_Mecano", "actes-visibles.md"},
        {"J_CAISSE", "regler-un-acte.md"},
        {"Q_Date_2", "touches.md"},
        {"F_Inst", "regler-les-instances.md"},
        {"F_Dep", "depenses.md"},
        {"Planning", "planning.md"},
        {"New_Rech", "patients.md"},
        {"j_Client", "patients.md"},
        {"F_Sppr", "actes-supprimes.md"},
        {"J_PROD", "prestations-et-tarifs.md"},
        {"Tarifs", "prestations-et-tarifs.md"},
        {"Recettes", "fin-de-mois.md"},
        {"Mens_Act", "fin-de-mois.md"},
        {"Chrges", "fin-de-mois.md"},
        {"Result", "fin-de-mois.md"},
        {"Preview", "imprimer.md"},
    };
    return pages.value(screen, ContentsPage);
}

QStringList Guide::Pages()
{
    static const QRegularExpression link(R"(\]\(([\w-]+\.md)\))");
    QFile contents(QStringLiteral(":/guide/") + ContentsPage);
    QStringList pages{ContentsPage};
    if (contents.open(QIODevice::ReadOnly))
        for (const auto& match : link.globalMatch(QString::fromUtf8(contents.readAll())))
            pages << match.captured(1);
    return pages;
}

bool Guide::FindInPage(bool fromStart)
{
    if (fromStart)
        Page.moveCursor(QTextCursor::Start);
    return Page.find(SearchText.text().trimmed());
}

void Guide::FindNext()
{
    Found.setText("");
    if (SearchText.text().trimmed().isEmpty() || FindInPage(false))
        return;
    const QStringList pages = Pages();
    const auto shown = pages.indexOf(Page.source().fileName());
    for (qsizetype step = 1; step <= pages.size(); ++step) {
        Page.setSource(Address(pages[(shown + step) % pages.size()]));
        if (FindInPage(true))
            return;
    }
    Found.setText("Introuvable");
}

void ShowGuide(const QString& screen)
{
    Guide guide(screen);
    TheDesk().ShowModal(guide);
}

} // namespace core
