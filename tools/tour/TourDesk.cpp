#include "TourDesk.h"

#include "Legibility.h"

#include "platform/forms/Guard.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QScreen>
#include <QTextStream>
#include <QTimer>
#include <cstdlib>

namespace tour {

namespace {

constexpr auto MessageName = "message";

/// The name without characters that file systems don't allow.
QString FileName(int number, const QString& name)
{
    return QStringLiteral("%1-%2.png").arg(number, 2, 10, QLatin1Char('0')).arg(name);
}

} // namespace

TourDesk::TourDesk(const QString& pictureFolder, int expectedPictures)
    : folder(pictureFolder), expected(expectedPictures)
{
    Require(QDir().mkpath(folder), "Impossible de créer " + folder);
}

void TourDesk::Visit(std::function<void(forms::Form&)> visit)
{
    visits.push_back(std::move(visit));
}

void TourDesk::Answer(const QString& text, const QString& button)
{
    answers.push_back({text, button});
}

void TourDesk::AtEnd(std::function<void()> lastLook)
{
    look = std::move(lastLook);
}

void TourDesk::TakePicture(QWidget& window, const QString& name)
{
    for (int round = 0; round < 2; ++round) // the second round resizes the window to contents that grew in the first
        QApplication::processEvents();
    const QRect frame = window.frameGeometry();
    const QRect room = window.screen()->availableGeometry();
    if (!room.contains(frame))
        Report(name, QStringLiteral("%1 x %2 points dépassent l'écran").arg(frame.width()).arg(frame.height()));
    TakeLongPicture(window, name);
}

void TourDesk::TakeLongPicture(QWidget& window, const QString& name)
{
    QApplication::processEvents();
    const QString path = QDir(folder).filePath(FileName(++pictures, name));
    const QImage picture = window.grab().toImage();
    Require(picture.save(path), "Image non enregistrée : " + path);
    const std::size_t hash = qHashBits(picture.constBits(), static_cast<std::size_t>(picture.sizeInBytes()));
    if (taken.contains(hash) && name != MessageName)
        Report(name, "montre la même chose que " + taken[hash]);
    taken[hash] = name;
    for (const QString& part : IllegibleParts(window, picture))
        Report(name, part);
}

void TourDesk::Report(const QString& picture, const QString& fault)
{
    QTextStream(stderr) << picture << " : " << fault << Qt::endl;
    ++faults;
}

void TourDesk::Require(bool holds, const QString& reason)
{
    if (holds)
        return;
    QTextStream(stderr) << "La visite s'arrête : " << reason << Qt::endl;
    std::_Exit(1);
}

forms::Answer TourDesk::Message(const QString& text, forms::Icon icon, const QString& title, forms::Buttons buttons)
{
    Require(!answers.empty() && answers.front().text == text, "message inattendu : " + text);
    const QString button = answers.front().button;
    answers.pop_front();
    QTimer::singleShot(0, qApp, [this, button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        Require(box != nullptr, "le message ne s'affiche pas");
        TakePicture(*box, MessageName);
        for (QAbstractButton* choice : box->buttons())
            if (choice->text().remove(QLatin1Char(38)) == button)
                return choice->click();
        Require(false, "pas de bouton " + button);
    });
    return QtDesk::Message(text, icon, title, buttons);
}

void TourDesk::ShowModal(forms::Form& form)
{
    Require(!visits.empty(), "écran inattendu : " + form.objectName());
    const auto visit = visits.front();
    visits.pop_front();
    PlayWhenShown(form, visit);
    QtDesk::ShowModal(form);
}

void TourDesk::PlayWhenShown(forms::Form& form, const std::function<void(forms::Form&)>& visit)
{
    constexpr int patience = 10; // milliseconds; a loading screen may show another one first
    QTimer::singleShot(patience, &form, [this, &form, visit] {
        if (!form.isVisible())
            return PlayWhenShown(form, visit);
        forms::Guarded([&] { visit(form); });
        Require(!form.isVisible(), "l'écran reste ouvert : " + form.objectName());
    });
}

void TourDesk::EndProgram(int code)
{
    Require(visits.empty() && answers.empty(), "la visite n'est pas finie");
    Require(faults == 0, QStringLiteral("%1 textes ou contrôles mal lisibles").arg(faults));
    Require(pictures == expected, QStringLiteral("%1 images au lieu de %2").arg(pictures).arg(expected));
    if (look)
        look();
    QtDesk::EndProgram(code);
}

} // namespace tour
