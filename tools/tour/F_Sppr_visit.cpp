#include "F_Sppr_visit.h"

#include "acts/F_Sppr.h"
#include "platform/report/PreviewWindow.h"

using acts::F_Sppr;

namespace tour {

namespace {

void ChooseDay(TourDesk& desk, F_Sppr& screen)
{
    screen.Image1[F_Sppr::OtherDate].click();
    screen.Text1.setText(screen.Grid1.Text(screen.Grid1.Rows() - 1, F_Sppr::RemovalDate));
    desk.TakePicture(screen, "F_Sppr-date");
    screen.Image2[F_Sppr::Accept].click();
    desk.TakePicture(screen, "F_Sppr-jour");
}

void PrintDay(TourDesk& desk, F_Sppr& screen)
{
    desk.Visit([&desk](forms::Form& form) {
        desk.TakePicture(form, "Preview-supprimes");
        form.Unload();
    });
    screen.Image1[F_Sppr::Print].click();
}

} // namespace

void VisitDeletedActs(TourDesk& desk, core::Form1& main)
{
    desk.Visit([&desk](forms::Form& form) {
        auto& screen = dynamic_cast<F_Sppr&>(form);
        desk.TakePicture(screen, "F_Sppr");
        ChooseDay(desk, screen);
        PrintDay(desk, screen);
        screen.Image1[F_Sppr::Quit].click();
    });
    main.Entry("mnu_asuppr")->trigger();
}

} // namespace tour
