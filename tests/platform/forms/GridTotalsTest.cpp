#include "platform/forms/GridTotals.h"

#include "platform/forms/Form.h"
#include "support/Cells.h"
#include "support/ScriptedDesk.h"

#include <gtest/gtest.h>

namespace {

/// A list with a count and two amounts, and their totals.
struct Listing : forms::Form {
    Listing() : Form("Listing")
    {
        SetContent(forms::Column{forms::Item::Growing(
            forms::WithTotals(grid, {{forms::Caption("LTotal", "Total"), forms::Under(grid, 1, count),
                                      forms::Under(grid, 2, received), forms::Under(grid, 3, due)}}))});
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

    QRect Footer() const
    {
        for (const QFrame* frame : screen.findChildren<QFrame*>())
            if (frame->property("footer").toBool())
                return frame->geometry();
        return {};
    }

    void Show(const QString& figure)
    {
        for (forms::FigureLabel* label : {&screen.received, &screen.due})
            label->setText(figure);
        screen.count.setText("32767");
        screen.layout()->activate();
        support::ProcessEvents();
    }

    /// Shows a figure, which may be reduced but not cut.
    void ExpectWhole(QString figure)
    {
        SCOPED_TRACE(figure.toStdString());
        Show(figure);
        EXPECT_FALSE(screen.received.geometry().intersects(screen.due.geometry()));
        EXPECT_FALSE(screen.received.geometry().intersects(screen.count.geometry()));
        const QImage received = screen.received.grab().toImage();
        const QImage due = screen.due.grab().toImage();
        Show(figure.replace(figure.startsWith('-') ? 1 : 0, 1, "8"));
        EXPECT_NE(screen.received.grab().toImage(), received) << "its first digit doesn't show";
        EXPECT_NE(screen.due.grab().toImage(), due) << "its first digit doesn't show";
    }
};

} // namespace

TEST_F(TotalsOfAGrid, StayUnderTheirColumns)
{
    for (const int wider : {0, 300}) {
        screen.resize(screen.width() + wider, screen.height());
        Show("1 250.00 ");
        EXPECT_TRUE(tests::IsUnder(screen.count, screen.grid, 1));
        EXPECT_TRUE(tests::IsUnder(screen.received, screen.grid, 2));
        EXPECT_TRUE(tests::IsUnder(screen.due, screen.grid, 3));
        EXPECT_EQ(Footer(), QRect(screen.grid.geometry().bottomLeft() + QPoint(0, 1),
                                  QSize(screen.grid.width(), screen.due.height())));
    }
    screen.resize(220, screen.height()); // narrower than the columns: all totals stay visible
    support::ProcessEvents();
    EXPECT_LE(screen.due.geometry().right(), screen.width());
    EXPECT_GE(screen.count.geometry().left(), 0);
    ExpectWhole("123 456 789.50 ");
}

TEST_F(TotalsOfAGrid, AreNeverCut)
{
    const auto& caption = *screen.findChild<forms::Label*>("LTotal");
    EXPECT_GE(caption.width(), caption.sizeHint().width());
    for (const char* figure : {"123 456 789.50 ", "-123 456 789.50 ", "932 123 456 789.50 "}) {
        ExpectWhole(figure);
        EXPECT_TRUE(caption.width() <= 0 || caption.width() >= caption.sizeHint().width()) << caption.width();
    }
}
