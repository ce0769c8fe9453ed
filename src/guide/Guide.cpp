#include "guide/Guide.h"

#include "core/globals.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/host/Files.h"

#include <QFile>
#include <QHash>
#include <QRegularExpression>

using namespace forms;

namespace guide {

namespace {

constexpr auto ContentsPage = "index.md";

QString PathOf(const QString& page)
{
    return Guide::Folder() + "/" + page;
}

QUrl Address(const QString& page)
{
    return QUrl::fromLocalFile(PathOf(page));
}

QString TextOf(const QString& page)
{
    QFile file(PathOf(page));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// Whether the rendered page contains the text.
bool PageContains(const QString& page, const QString& text)
{
    QTextDocument read;
    read.setMarkdown(TextOf(page));
    return !read.find(text).isNull();
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
    OnCommand(Command::Search, [this] {
        SearchText.setFocus(Qt::ShortcutFocusReason);
        SearchText.selectAll();
    });
    On(Page, &QTextBrowser::backwardAvailable, Back, &QWidget::setEnabled);
    On(Page, &QTextBrowser::sourceChanged, *this, &Guide::ShowTitle);
}

void Guide::Form_Load()
{
    Centre();
    Back.setEnabled(false);
    if (QFile::exists(PathOf(firstPage)))
        Page.setSource(Address(firstPage));
    else
        Page.setPlainText("Le guide n'est pas installé : " + PathOf(firstPage) + " manque.");
    Page.setFocus();
}

void Guide::ShowTitle()
{
    Found.setText("");
    setWindowTitle("Guide - " + Page.Title());
    Page.setAccessibleName(Page.Title());
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
        {"Chrges", "charges.md"},
        {"Result", "fin-de-mois.md"},
        {"Evolution", "evolution.md"},
        {"Preview", "imprimer.md"},
        {"LongReading", "imprimer.md"},
    };
    return pages.value(screen, ContentsPage);
}

QString Guide::Folder()
{
    return host::FolderOfOwnFile(core::ProgramFolder, QStringLiteral("guide/") + ContentsPage) + "/guide";
}

QStringList Guide::Pages()
{
    static const QRegularExpression link(R"(\]\(([\w-]+\.md)\))");
    QStringList pages{ContentsPage};
    for (const auto& match : link.globalMatch(TextOf(ContentsPage)))
        pages << match.captured(1);
    return pages;
}

void Guide::FindNext()
{
    Found.setText("");
    const QString text = SearchText.text().trimmed();
    if (text.isEmpty())
        return SearchText.setFocus();
    if (Page.find(text))
        return;
    const QStringList pages = Pages();
    const auto shown = pages.indexOf(Page.source().fileName());
    for (qsizetype step = 1; step <= pages.size(); ++step) {
        const QString& page = pages[(shown + step) % pages.size()];
        if (!PageContains(page, text))
            continue;
        Page.setSource(Address(page));
        Page.moveCursor(QTextCursor::Start);
        Page.find(text);
        return;
    }
    Found.setText("Introuvable");
}

void ShowGuide(const QString& screen)
{
    Guide guide(screen);
    TheDesk().ShowModal(guide);
}

} // namespace guide
