#include "platform/forms/Style.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QIcon>
#include <QPalette>

// A static library's resources are linked in only where something asks for them; the macro must stand outside
// namespaces.
static void LinkResources()
{
    Q_INIT_RESOURCE(resources);
}

namespace forms {

namespace {

QPalette Colours()
{
    const QColor ink(0x26, 0x32, 0x38);
    const QColor accent(0x1f, 0x6f, 0x8b);
    const QColor faded(0x9a, 0xa5, 0xab);

    QPalette palette(QColor(0xe9, 0xee, 0xf0), QColor(0xf5, 0xf7, 0xf8));
    palette.setColor(QPalette::WindowText, ink);
    palette.setColor(QPalette::Text, ink);
    palette.setColor(QPalette::ButtonText, ink);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf3, 0xf7, 0xf8));
    palette.setColor(QPalette::Mid, QColor(0xc3, 0xcd, 0xd2));
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, faded);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faded);
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(0xee, 0xf1, 0xf3));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xc3, 0xcd, 0xd2));
    return palette;
}

QString StyleSheet()
{
    QFile file(QStringLiteral(":/style.qss"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The program was built without its style sheet.");
    return QString::fromUtf8(file.readAll());
}

} // namespace

void ApplyStyle(QApplication& application)
{
    LinkResources();
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(Colours());
    QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 10));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/app.svg")));
    application.setStyleSheet(StyleSheet());
}

} // namespace forms
