#include "Catalogue_visit.h"

#include "TourDesk.h"

#include "catalogue/J_PROD.h"
#include "catalogue/Tarifs.h"
#include "core/Form1.h"

#include <QTest>

using catalogue::J_PROD;
using catalogue::Tarifs;

namespace tour {

namespace {

void EnterService(TourDesk& desk, J_PROD& services, const QString& name, const QString& price)
{
    services.Crecettes[J_PROD::New].click();
    QTest::keyClicks(&services.NameField, name);
    QTest::keyClick(&services.NameField, Qt::Key_Return);
    QTest::keyClicks(&services.PriceField, price);
    desk.TakePicture(services, "J_PROD-saisie");
    desk.Answer("Enregistrement réussi", "OK");
    services.Image2[J_PROD::Accept].click();
}

void MoveAndDeleteLast(TourDesk& desk, J_PROD& services)
{
    QTest::keyClick(&services.Grid1, Qt::Key_End);
    services.Image1[J_PROD::MoveUp].click();
    services.Image1[J_PROD::MoveUp].click();
    const int row = services.Grid1.Row();
    TourDesk::Require(row == services.Grid1.Rows() - 3, "la prestation n'est pas montée");
    desk.TakePicture(services, "J_PROD-ordre");
    desk.Answer(QStringLiteral("Confirmer supression de ligne N° %1").arg(row + 1), "Oui");
    services.Crecettes[J_PROD::Delete].click();
    desk.TakePicture(services, "J_PROD-apres");
}

void ChangeRate(TourDesk& desk, Tarifs& tariffs)
{
    desk.TakePicture(tariffs, "Tarifs");
    for (int row = 0; row < 5; ++row)
        QTest::keyClick(&tariffs.Grid1, Qt::Key_Down);
    QTest::keyClick(&tariffs.Grid1, Qt::Key_Return);
    QTest::keyClicks(&tariffs.RateField, "450");
    desk.TakePicture(tariffs, "Tarifs-modification");
    QTest::keyClick(&tariffs.RateField, Qt::Key_Return);
    TourDesk::Require(tariffs.Grid1.Text(5, Tarifs::Rate) == "450", "le tarif n'a pas changé");
    desk.TakePicture(tariffs, "Tarifs-apres");
    tariffs.Image2[Tarifs::StoreAndQuit].click();
}

} // namespace

void VisitCatalogue(TourDesk& desk, core::Form1& main)
{
    desk.Visit([&desk](forms::Form& form) {
        auto& services = dynamic_cast<J_PROD&>(form);
        desk.TakePicture(services, "J_PROD");
        EnterService(desk, services, "Holter tensionnel", "2500");
        EnterService(desk, services, "Vaccination", "600");
        MoveAndDeleteLast(desk, services);
        services.Crecettes[J_PROD::Quit].click();
    });
    main.Entry("mnu_Prest")->trigger();
    desk.Visit([&desk](forms::Form& form) { ChangeRate(desk, dynamic_cast<Tarifs&>(form)); });
    main.Entry("mnu_tarif")->trigger();
}

} // namespace tour
