#include "Sheet.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/Colours.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Icons.h"
#include "support/Accessibility.h"
#include "support/ScriptedDesk.h"

#include <QAccessible>
#include <QApplication>
#include <QBitmap>
#include <QEnterEvent>
#include <QPixmap>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

/// A screen with two pictures and a Bulle.
struct Hover : forms::Form {
    Hover() : Form("Hover")
    {
        SetContent(forms::Column{images[0], images[1], field});
        bulle.Attach(images[0], [this] { return action; });
        bulle.Attach(images[1], [] { return QStringLiteral(" Quitter "); });
    }

    QString action = " Autre date ";
    forms::ControlArray<forms::Picture, 2> images{"Image1"};
    forms::TextBox field{"Text1"};
    forms::Bulle bulle;
};

void MovePointer(QWidget& widget, bool onto)
{
    QEnterEvent enter(QPointF(4, 4), QPointF(4, 4), QPointF(4, 4));
    QEvent leave(QEvent::Leave);
    widget.setAttribute(Qt::WA_UnderMouse, onto);
    QApplication::sendEvent(&widget, onto ? static_cast<QEvent*>(&enter) : &leave);
}

struct Controls : testing::Test {
    ScriptedDesk desk;
};

} // namespace

TEST_F(Controls, OfAnArrayAreNamedByTheirIndex)
{
    forms::ControlArray<forms::Picture, 3> images("Image2");
    EXPECT_EQ(images[2].objectName(), "Image2(2)");
    for (const int none : {-1, 3})
        EXPECT_EQ(ErrorOf([&] { images[none]; }), Error::IndexOutOfRange) << none;
}

TEST_F(Controls, BulleShowsTheActionOfThePictureUnderThePointerOrFocus)
{
    auto& screen = desk.Open<Hover>();
    screen.field.setFocus();
    EXPECT_FALSE(screen.bulle.isVisible());
    MovePointer(screen.images[0], true);
    EXPECT_TRUE(screen.bulle.isVisible());
    EXPECT_EQ(screen.bulle.text(), " Autre date ");
    EXPECT_TRUE(screen.images[0].HasBorder());
    EXPECT_FALSE(screen.bulle.geometry().intersects(screen.images[0].geometry()));

    screen.images[1].setFocus(Qt::TabFocusReason); // the focus takes the bubble over, then the pointer leaves
    MovePointer(screen.images[0], false);
    EXPECT_TRUE(screen.bulle.isVisible());
    EXPECT_EQ(screen.bulle.text(), " Quitter ");
    EXPECT_FALSE(screen.images[0].HasBorder());
    screen.field.setFocus();
    EXPECT_FALSE(screen.bulle.isVisible());

    screen.action = "تـغـيير";
    MovePointer(screen.images[0], true);
    EXPECT_EQ(screen.bulle.text(), "تـغـيير");
    EXPECT_EQ(screen.images[0].accessibleName(), "تـغـيير");
    QSignalSpy clicked(&screen.images[0], &QAbstractButton::clicked);
    screen.images[0].setEnabled(false);
    for (int round = 0; round < 2; ++round) { // it loses its border, and takes none
        EXPECT_FALSE(screen.images[0].HasBorder() || screen.bulle.isVisible());
        MovePointer(screen.images[0], true);
    }
    screen.images[0].click();
    EXPECT_EQ(clicked.count(), 0);
    screen.images[0].setEnabled(true);
    MovePointer(screen.images[0], true);
    screen.images[0].hide();
    EXPECT_FALSE(screen.bulle.isVisible());
}

TEST_F(Controls, WithoutAccessibleNamesAreFaults)
{
    auto& screen = desk.Open<Hover>();
    EXPECT_EQ(AccessibilityFaults(screen), QStringList{"forms::TextBox Text1"});
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&screen.images[1])->role(), QAccessible::Button);

    EXPECT_EQ(AccessibilityFaults(desk.Open<Sheet>()).size(), 5); // one of each kind
}

TEST_F(Controls, ComboBoxSelectsNoLineByItself)
{
    forms::ComboBox combo("Combo1");
    QSignalSpy chosen(&combo, &QComboBox::currentIndexChanged);
    combo.addItems({"NP", "R-", "P "});
    EXPECT_EQ(combo.currentIndex(), -1);
    EXPECT_EQ(chosen.count(), 0);
    combo.SetListIndex(2);
    EXPECT_EQ(chosen.count(), 1);
    for (const int none : {-2, 3})
        EXPECT_EQ(ErrorOf([&] { combo.SetListIndex(none); }), Error::InvalidProperty) << none;
    EXPECT_EQ(combo.currentIndex(), 2);
}

TEST_F(Controls, ShowTextsLiterally)
{
    forms::Label label("Label1", "<b>DUPONT</b>");
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    forms::Panel panel("SSPanel1", "<i>Mouvements</i>");
    EXPECT_EQ(panel.findChild<QLabel*>()->textFormat(), Qt::PlainText);
    panel.setProperty("caption", "Correction");
    EXPECT_EQ(panel.Caption(), "Correction");
}

TEST_F(Controls, PanelIsATitleUntilItHasContents)
{
    forms::Panel title("SSPanel1", "Mouvements");
    forms::Panel entry("SSPanel2", "Correction");
    forms::Button button("Command1", "Valider");
    forms::Inside(entry, forms::Column{button});
    const auto isFramed = [](forms::Panel& panel) {
        panel.resize(panel.sizeHint());
        const QImage image = panel.grab().toImage();
        constexpr int aboveTheCaption = 7;
        return image.pixelColor(0, aboveTheCaption) != image.pixelColor(4, aboveTheCaption);
    };
    EXPECT_FALSE(isFramed(title));
    EXPECT_TRUE(isFramed(entry));
}

TEST_F(Controls, EveryIconIsDrawnWhole)
{
    const QStringList names = forms::IconNames();
    EXPECT_FALSE(names.isEmpty());
    for (const QString& name : names) {
        const QImage image = forms::IconPixmap(name, 64, 1).toImage();
        const QRect ink = QRegion(QBitmap::fromImage(image.createAlphaMask())).boundingRect();
        EXPECT_FALSE(ink.isEmpty()) << name.toStdString();
        EXPECT_TRUE(image.rect().adjusted(1, 1, -1, -1).contains(ink)) << name.toStdString();
    }
}

TEST_F(Controls, IconsHaveTheColoursOfTheirRoles)
{
    const forms::Colours& colours = forms::TheColours();
    const struct {
        const char* icon;
        QPoint place;
        QColor colour;
    } rows[] = {
        {"evolution", {40, 100}, colours.text},
        {"add", {120, 80}, colours.accent},
        {"app", {120, 30}, colours.accent},
        {"app", {60, 130}, colours.window},
        {"quit-hover", {70, 160}, colours.backdrop},
        {"message-warning", {75, 180}, colours.warning},
        {"message-critical", {120, 38}, colours.alarm},
        {"backdrop", {30, 135}, colours.backdrop}, // wider than high
    };
    for (const auto& row : rows)
        EXPECT_EQ(forms::IconPixmap(row.icon, 240, 1).toImage().pixelColor(row.place), row.colour) << row.icon;
    EXPECT_EQ(forms::ProgramIcon().pixmap(128).toImage().pixelColor(64, 16), QColor("#1f6f8b"));
}
