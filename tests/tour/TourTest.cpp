// The tour's own checks, by samples that must fail.
#include "tour/Legibility.h"
#include "tour/TourDesk.h"

#include "support/ScriptedDesk.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

/// A window with one control.
struct Sample {
    Sample(QWidget* sample, const QRect& place)
    {
        window.resize(400, 200);
        sample->setParent(&window);
        sample->setObjectName("Essai");
        sample->setGeometry(place);
        window.show();
        support::ProcessEvents();
    }

    QString Faults() const
    {
        return tour::IllegibleParts(window, const_cast<QWidget&>(window).grab().toImage()).filter("/Essai").join('\n');
    }

    QWidget window;
};

const QString Long = "Un texte plus large que la place qui lui est donnée";

QWidget* Faint(QWidget* control)
{
    control->setStyleSheet("color: #c0c0c0; background: white");
    return control;
}

QComboBox* Choice(const QString& text)
{
    auto* choice = new QComboBox;
    choice->addItem(text);
    return choice;
}

QTabBar* Tabs(const QString& text)
{
    auto* tabs = new QTabBar;
    tabs->setUsesScrollButtons(true);
    for (int tab = 0; tab < 3; ++tab)
        tabs->addTab(text);
    return tabs;
}

QTableWidget* Table(const QString& heading)
{
    auto* table = new QTableWidget(1, 1);
    table->setHorizontalHeaderLabels({heading});
    table->verticalHeader()->hide();
    table->setColumnWidth(0, 60);
    return table;
}

} // namespace

TEST(Legibility, FindsWhatIsCutOutsideOrFaintAndNothingElse)
{
    const QRect place(10, 10, 80, 40);
    const QRect wide(10, 10, 120, 40);
    const struct {
        QWidget* control;
        QRect place;
        const char* fault;
    } samples[] = {
        {new QLabel(Long), place, "est coupé"},
        {new QLabel("Nom"), place, ""},
        {new QPushButton(Long), place, "est coupé"},
        {new QPushButton("Nom"), place, ""},
        {Choice(Long), place, "est coupé"},
        {Choice("Nom"), wide, ""},
        {Tabs(Long), place, "est coupé"},
        {Tabs("A"), QRect(10, 10, 300, 40), ""},
        {Table(Long), QRect(10, 10, 200, 100), "est coupé"},
        {Table("Nom"), QRect(10, 10, 200, 100), ""},
        {new QLabel("Nom"), QRect(350, 10, 80, 40), "dépasse son cadre"},
        {Faint(new QLabel("Nom")), place, "se lit mal sur son fond"},
    };
    for (const auto& sample : samples) {
        const QString faults = Sample(sample.control, sample.place).Faults();
        EXPECT_TRUE(*sample.fault == 0 ? faults.isEmpty() : faults.contains(sample.fault))
            << sample.control << ": expected \"" << sample.fault << "\", found \"" << faults.toStdString() << '"';
    }
}

TEST(TourDeathTest, FailsWithoutAPictureOrWithTheSameOneTwice)
{
    const QTemporaryDir folder;
    const auto take = [&](const QStringList& names, int expected) {
        tour::TourDesk desk(folder.path(), expected);
        QLabel window("Nom");
        window.show();
        for (const QString& name : names) {
            window.setText(name);
            desk.TakePicture(window, name.section(' ', 0, 0));
        }
        desk.EndProgram(0);
    };
    EXPECT_EXIT(take({"a", "b"}, 2), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(take({"a", "b"}, 3), testing::ExitedWithCode(1), "2 images au lieu de 3");
    EXPECT_EXIT(take({"a", "a"}, 2), testing::ExitedWithCode(1), "a : montre la même chose que a");
    EXPECT_EXIT(take({"message", "message"}, 2), testing::ExitedWithCode(0), "");
}
