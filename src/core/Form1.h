#pragma once

#include "core/Greeting.h"
#include "core/MenuTable.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

#include <QAction>
#include <QMenuBar>

namespace core {

/// The main window and the start of the program. Until a data folder is accepted the menu offers only "Explorer ..."
/// and "Quitter"; then the letterhead is shown and all screens are available. This happens at most once.
class Form1 : public forms::Form {
    Q_OBJECT
public:
    explicit Form1(ScreenOpeners screens);

    forms::ControlArray<forms::Label, 3> Label1{"Label1"}; ///< letterhead; Label1(0) visible means a practice is open
    forms::ControlArray<forms::Label, 1> Label4{"Label4"}; ///< product title
    forms::Picture Image1{"Image1"};                       ///< quits
    forms::Picture Image2{"Image2"};                       ///< its hover picture; quits as well
    forms::Label Image3{"Image3"};                         ///< background

    void mnu_aprpos_Click();
    void mnu_Caisse_Click();
    void mnuQ_Click();

    /// Ends the program without asking, when the system requests it: closes the open screens as their close boxes do,
    /// archives and quits. Asynchronous: returns before the first screen closes.
    void EndForSystem();
    /// Archives an open practice and ends the program.
    void EndNow();

    /// The menu entry of a control name; null when there is none.
    QAction* Entry(std::string_view control) const;

protected:
    void Form_Load() override;
    bool Form_QueryUnload() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void BuildForm();
    void BuildMenu();
    void BuildGreeting();
    void ShowMenuState(bool opened);
    void ChooseEntry(const MenuEntry& entry);
    void OpenScreen(std::string_view control);
    void ShowBackdrop();
    void FitDisplay();
    void ShowLetterhead();
    /// Restores the display, closes and archives an open practice; returns the exit code. An error is shown and skips
    /// the remaining steps.
    int ShutDown();

    void CloseTopScreen();

    ScreenOpeners openers;
    QMenuBar menu;
    std::map<std::string, QAction*, std::less<>> entries;
    Greeting greeting;
};

} // namespace core
