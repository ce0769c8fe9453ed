#include "platform/forms/GridTotals.h"

#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "support/ScriptedDesk.h"

#include <QScrollBar>
#include <gtest/gtest.h>

namespace {

/// A list with a count and two amounts, and their totals.
struct Listing : forms::Form {
    Listing() : Form("Listing")
    {
        SetContent(forms::Column{forms::Item::Growing(grid),
                                 forms::Totals(grid, {forms::Caption("LTotal", "Total"), forms::Under(grid, 1, count),
                                                      forms::Under(grid, 2, received), forms::Under(grid, 3, due)})});
    }

    forms::Grid grid{"Grid1",
                     {{"Unité", 1780},
                      {"Nbre", 840, Qt::AlignCenter},
                      {"Perçu", 1150, Qt::AlignRight},
                      {"Théorique", 1150, Qt::AlignRight}}};
    forms::FigureLabel count{"Count"};
    forms::FigureLabel received{"Received"};
    forms::FigureLabel due{"Due"};
};

struct TotalsOfAGrid : testing::Test {
    ScriptedDesk desk;
    Listing& screen = desk.Open<Listing>();

    /// Where a column ends, in pixels of the window.
    int RightOf(int column) const
    {
        return screen.grid.x() + screen.grid.frameWidth() + screen.grid.columnViewportPosition(column) +
               screen.grid.columnWidth(column) - 1;
    }

    void Show(const char* figure)
    {
        for (forms::FigureLabel* label : {&screen.received, &screen.due})
            label->setText(figure);
        screen.count.setText("32767");
        screen.layout()->activate();
        support::ProcessEvents();
    }
};

/// The horizontal extent of the ink of a label, in pixels.
std::pair<int, int> InkOf(forms::FigureLabel& label)
{
    const QImage image = label.grab().toImage();
    const QRgb ground = image.pixel(3, image.height() / 2);
    int left = image.width();
    int right = -1;
    for (int x = 3; x < image.width() - 3; ++x) {
        for (int y = 4; y < image.height() - 4; ++y) {
            if (image.pixel(x, y) != ground) {
                left = qMin(left, x);
                right = qMax(right, x);
            }
        }
    }
    return {left, right};
}

} // namespace

TEST_F(TotalsOfAGrid, StayUnderTheirColumns)
{
    Show("1 250.00 ");
    EXPECT_EQ(screen.received.geometry().right(), RightOf(2));
    EXPECT_EQ(screen.count.width(), screen.grid.columnWidth(1));
    screen.resize(screen.width() + 300, screen.height());
    support::ProcessEvents();
    EXPECT_EQ(screen.received.geometry().right(), RightOf(2));
    EXPECT_EQ(screen.due.geometry().right(), RightOf(3));

    screen.resize(220, screen.height()); // narrower than the columns: all totals stay visible
    support::ProcessEvents();
    screen.grid.horizontalScrollBar()->setValue(0);
    support::ProcessEvents();
    EXPECT_LE(screen.due.geometry().right(), screen.width());
    EXPECT_LT(screen.received.geometry().right(), screen.due.geometry().left() + 1);
    EXPECT_GE(screen.count.geometry().left(), 0);
}

TEST_F(TotalsOfAGrid, AreNeverCut)
{
    const auto& caption = *screen.findChild<forms::Label*>("LTotal");
    EXPECT_GE(caption.width(), caption.sizeHint().width());
    for (const char* figure : {"123 456 789.50 ", "-123 456 789.50 ", "-32 123 456 789.50 "}) {
        Show(figure);
        EXPECT_FALSE(screen.received.geometry().intersects(screen.due.geometry())) << figure;
        EXPECT_FALSE(screen.received.geometry().intersects(screen.count.geometry())) << figure;
        for (forms::FigureLabel* label : {&screen.received, &screen.due}) {
            const auto [left, right] = InkOf(*label);
            EXPECT_GE(left, 3) << figure;
            EXPECT_LE(right, label->width() - 4) << figure;
            EXPECT_GT(right - left, label->width() / 2) << figure;
        }
        EXPECT_TRUE(caption.width() <= 0 || caption.width() >= caption.sizeHint().width()) << caption.width();
    }
    screen.due.setText("9999 999.98");
    const int shorter = InkOf(screen.due).second - InkOf(screen.due).first;
    screen.due.setText("19999 999.98");
    EXPECT_GT(InkOf(screen.due).second - InkOf(screen.due).first, shorter); // not cut on the left
}
