#include "j_Client_visit.h"

#include "acts/New_Rech.h"
#include "acts/j_Client.h"

#include <QTest>

using acts::j_Client;
using acts::New_Rech;

namespace tour {

namespace {

void Search(TourDesk& desk, New_Rech& search)
{
    desk.TakePicture(search, "New_Rech-numero");
    search.SSTab1.setCurrentIndex(New_Rech::NamesPage);
    QTest::keyClicks(&search.Text2[New_Rech::LastName], "b");
    desk.TakePicture(search, "New_Rech-nom");
    QTest::keyClick(&search.Text2[New_Rech::LastName], Qt::Key_Return);
    QTest::keyClick(&search.Text2[New_Rech::FirstName], Qt::Key_Return);
    TourDesk::Require(search.Grid2.Rows() > 1, "personne ne s'appelle ainsi");
    desk.TakePicture(search, "New_Rech-resultat");
    search.Image4[New_Rech::Back].click();
    TourDesk::Require(search.SSTab1.isVisible(), "les critères ne reviennent pas");
    search.Image4[New_Rech::Leave].click();
}

} // namespace

void VisitPatients(TourDesk& desk, core::Form1& main)
{
    desk.Visit([&desk](forms::Form& form) {
        auto& screen = dynamic_cast<j_Client&>(form);
        desk.TakePicture(screen, "j_Client");
        screen.ListQuery = "select * from Patients order by nom, prenom";
        screen.FillPatientGrid();
        screen.Crecettes[j_Client::Archive].click();
        desk.TakePicture(screen, "j_Client-liste");
        screen.Crecettes[j_Client::Quit].click();
    });
    // The search opens while the list is being loaded.
    desk.Visit([&desk](forms::Form& form) { Search(desk, dynamic_cast<New_Rech&>(form)); });
    main.Entry("NPatients")->trigger();
}

} // namespace tour
