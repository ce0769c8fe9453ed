#include "platform/forms/Style.h"

#include "platform/forms/Colours.h"
#include "platform/forms/Icons.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QFont>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QProxyStyle>
#include <QTranslator>

// A static library's resources must be initialised explicitly; the macro must be outside namespaces.
static void LinkResources()
{
    Q_INIT_RESOURCE(resources);
}

namespace forms {

namespace {

constexpr double UsualPoints = 10; // column widths are designed for it

/// The style sheet with its "@role@" placeholders filled.
QString StyleSheet()
{
    QFile file(QStringLiteral(":/style.qss"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The program was built without its style sheet.");
    QString sheet = QString::fromUtf8(file.readAll());
    const Colours& colours = TheColours();
    const struct {
        const char* place;
        const QColor& colour;
    } roles[] = {
        {"@window@", colours.window},
        {"@raised@", colours.raised},
        {"@field@", colours.field},
        {"@alternate@", colours.alternate},
        {"@header@", colours.header},
        {"@hover@", colours.hover},
        {"@selection@", colours.selection},
        {"@border@", colours.border},
        {"@field-border@", colours.fieldBorder},
        {"@text@", colours.text},
        {"@quiet@", colours.quiet},
        {"@disabled@", colours.disabled},
        {"@accent@", colours.accent},
        {"@accent-ground@", colours.accentGround},
        {"@on-accent@", colours.onAccent},
        {"@alarm@", colours.alarm},
        {"@tip@", colours.tip},
        {"@on-tip@", colours.onTip},
    };
    for (const auto& role : roles)
        sheet.replace(QLatin1String(role.place), role.colour.name());
    const double points = QApplication::font().pointSizeF();
    sheet.replace("@title-points@", QString::number(1.2 * points));
    return sheet.replace("@large-points@", QString::number(1.5 * points));
}

/// Fusion with the program's icons in message boxes.
class ProgramStyle : public QProxyStyle {
public:
    ProgramStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override
    {
        switch (icon) {
        case SP_MessageBoxInformation:
            return NamedIcon("message-information");
        case SP_MessageBoxQuestion:
            return NamedIcon("message-question");
        case SP_MessageBoxWarning:
            return NamedIcon("message-warning");
        case SP_MessageBoxCritical:
            return NamedIcon("message-critical");
        default:
            return QProxyStyle::standardIcon(icon, option, widget);
        }
    }
};

/// Sets the style sheet, then the program's font again: a style sheet restores Windows' own fonts of menus, lists and
/// messages.
void SetStyleSheet(QApplication& application)
{
    const QFont font = QApplication::font();
    application.setStyleSheet(StyleSheet());
    QApplication::setFont(font);
}

/// Refreshes the colours when the desktop's palette changes.
class PaletteWatch : public QObject {
public:
    explicit PaletteWatch(QApplication& watched) : QObject(&watched), application(watched) {}

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == &application && event->type() == QEvent::ApplicationPaletteChange && !refreshing) {
            refreshing = true; // setting a style sheet also changes palettes
            RefreshColours();
            SetStyleSheet(application);
            refreshing = false;
        }
        return false;
    }

private:
    QApplication& application;
    bool refreshing = false;
};

void LoadFrenchTexts(QApplication& application)
{
    QLocale::setDefault(QLocale::French);
    auto* translator = new QTranslator(&application);
    if (translator->load(QStringLiteral("qtbase_fr"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
}

} // namespace

double FontScale()
{
    return QApplication::font().pointSizeF() / UsualPoints;
}

void ApplyStyle(QApplication& application)
{
    LinkResources();
    LoadFrenchTexts(application);
    const double desktopPoints = QApplication::font().pointSizeF();
    QFont font(QStringList{QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), QStringLiteral("DejaVu Sans")});
    font.setPointSizeF(qMax(UsualPoints, desktopPoints));

    QApplication::setStyle(new ProgramStyle); // the application owns it
    QApplication::setFont(font);
    QApplication::setWindowIcon(ProgramIcon());
    RefreshColours();
    SetStyleSheet(application);
    application.installEventFilter(new PaletteWatch(application));
}

} // namespace forms
