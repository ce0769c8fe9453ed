#pragma once

#include "core/MenuTable.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

#include <QAction>
#include <QMenuBar>

namespace core {

/// The main window and the start of the program. First no practice is open and the menu offers only "Explorer ..." and
/// "Quitter"; once a data folder was accepted, its letterhead shows and every screen can be reached. That passage
/// happens at most once.
class Form1 : public forms::Form {
    Q_OBJECT
public:
    explicit Form1(ScreenOpeners screens);

    forms::ControlArray<forms::Label, 3> Label1{"Label1"}; ///< letterhead; Label1(0) visible means a practice is open
    forms::ControlArray<forms::Label, 1> Label4{"Label4"}; ///< product title
    forms::Picture Image1{"Image1"};                       ///< quits
    forms::Picture Image2{"Image2"};                       ///< its hover picture, quits as well
    forms::Label Image3{"Image3"};                         ///< background

    void mnu_aprpos_Click();
    void mnu_Caisse_Click();
    void mnuQ_Click();

    /// Ends the program without asking, as the system wants it: closes the screens that are open as their close boxes
    /// do, archives and ends. Returns before it has happened; the screens close one after the other.
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
    void ShowMenuState(bool opened);
    void ChooseEntry(const MenuEntry& entry);
    void OpenScreen(std::string_view control);
    void ShowBackdrop();
    void FitDisplay();
    void ShowLetterhead();
    /// Puts the display back, closes and archives an open practice; returns the exit code. An error is shown and ends
    /// the steps.
    int ShutDown();

    void CloseTopScreen();

    ScreenOpeners openers;
    QMenuBar menu;
    std::map<std::string, QAction*, std::less<>> entries;
};

} // namespace core
