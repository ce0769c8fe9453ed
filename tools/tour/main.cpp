// Takes one act through the real screens on a copy of a practice, and saves a picture of each screen.

#include "Catalogue_visit.h"
#include "F_Dep_visit.h"
#include "F_Sppr_visit.h"
#include "Guide_visit.h"
#include "Planning_visit.h"
#include "Recettes_visit.h"
#include "TourDesk.h"
#include "analysis_visit.h"
#include "j_Client_visit.h"

#include "acts/New_Act.h"
#include "acts/New_Mecano.h"
#include "archives/Archives.h"
#include "cash/F_Inst.h"
#include "cash/J_CAISSE.h"
#include "core/Auteur.h"
#include "core/Form1.h"
#include "core/Identif.h"
#include "core/PPRT.h"
#include "core/Q_Date_2.h"
#include "core/configuration.h"
#include "core/globals.h"
#include "core/opening.h"
#include "data/PaymentCode.h"
#include "data/Practice.h"
#include "guide/Guide.h"
#include "menu.h"
#include "platform/basic/Dates.h"
#include "platform/forms/Guard.h"
#include "platform/forms/Style.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"
#include "platform/report/PreviewWindow.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTest>
#include <QTextStream>

using acts::New_Act;
using acts::New_Mecano;
using cash::CorrectionPanel;
using cash::F_Inst;
using cash::J_CAISSE;
using tour::TourDesk;

namespace {

QtMessageHandler defaultHandler = nullptr;

/// Drops the offscreen platform's remark on every window; passes on all other messages.
void OmitSizeHints(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (message != "This plugin does not support propagateSizeHints()")
        defaultHandler(type, context, message);
}

/// Copies a data folder without its archive, so that the tour doesn't change the practice.
void CopyPractice(const QString& from, const QString& to)
{
    QDir(to).removeRecursively();
    TourDesk::Require(QDir().mkpath(to + "/ARCHIVES"), "Impossible de créer " + to);
    const QDir source(from);
    for (const QString& name : source.entryList(QDir::Files | QDir::Hidden))
        TourDesk::Require(QFile::copy(source.filePath(name), QDir(to).filePath(name)), "Copie impossible : " + name);
}

/// The access code of the practice, from its configuration file.
QString AccessCode(const QString& folder)
{
    core::DataFolder = folder;
    core::LoadConfiguration();
    core::DataFolder.clear();
    return QString::number(2 * core::StoredAccessValue());
}

class Visit {
public:
    Visit(TourDesk& tourDesk, core::Form1& mainWindow, const QString& practiceFolder, const QString& pictureFolder)
        : desk(tourDesk), main(mainWindow), folder(practiceFolder), pictures(pictureFolder)
    {
    }

    void Play()
    {
        desk.TakePicture(main, "Form1");
        DamageThePractice();
        OpenPractice();
        ChooseToday();
        KeepTheCash();
        SettleOfAPeriod();
        tour::VisitAnalysis(desk, main, pictures);
        tour::VisitJournal(desk, main);
        tour::VisitExpenses(desk, main);
        tour::VisitPatients(desk, main);
        tour::VisitDeletedActs(desk, main);
        tour::VisitPlanning(desk, main, pictures);
        ThinTheActs();
        tour::VisitCatalogue(desk, main);
        tour::VisitGuide(desk, main);
        ShowWhatHasNoEntry();
        Quit();
    }

private:
    /// Opens a damaged database and accepts the offered copy.
    void DamageThePractice()
    {
        constexpr int pageBytes = 4096;
        constexpr int damagedPage = 5;
        archives::CopyToArchives(folder);
        QFile database(host::PathIn(folder, data::DatabaseFile));
        TourDesk::Require(database.open(QIODevice::ReadWrite) && database.seek(damagedPage * pageBytes) &&
                              database.write(QByteArray(pageBytes, '\xA5')) == pageBytes,
                          "la base ne peut pas être endommagée");
        const QString error = core::ErrorText(basic::RuntimeError(basic::Error::DamagedDatabase, data::DatabaseFile));
        desk.Answer(error, "OK");
        desk.Answer(error, "OK");
        desk.Answer("Remettre la copie du " + archives::MomentOf(archives::ArchivedCopies(folder).first()) +
                        " ? Les actes saisis depuis n'y sont pas.",
                    "Oui");
    }

    void OpenPractice()
    {
        const QString code = AccessCode(folder);
        desk.Visit([this, code](forms::Form& form) {
            auto& dialog = dynamic_cast<core::Auteur&>(form);
            dialog.Dir1.SetPath(folder);
            QTest::keyClicks(&dialog.Text1, code);
            desk.TakePicture(dialog, "Auteur");
            QTest::keyClick(&dialog.Text1, Qt::Key_Return);
        });
        main.Entry("mnu_aprpos")->trigger();
        TourDesk::Require(core::TheDatabase.IsOpen(), "le cabinet ne s'ouvre pas");
        desk.TakePicture(main, "Form1-cabinet");
    }

    /// Fixes today to the last day with an act to settle.
    static void ChooseToday()
    {
        dao::Recordset pending = core::TheDatabase.OpenRecordset(
            QStringLiteral("Select * from Actes where Flag_R < %1 order by date").arg(data::PaymentCode::P));
        TourDesk::Require(pending.RecordCount() > 0, "aucun acte en instance dans ce cabinet");
        pending.MoveLast();
        host::FixToday(basic::DateValue(pending["date"].Text()));
    }

    /// Shows the identifiers and the printers, which have no menu entry.
    void ShowWhatHasNoEntry()
    {
        const auto show = [this](forms::Form& screen, const QString& name) {
            desk.Visit([this, name](forms::Form& form) {
                desk.TakePicture(form, name);
                form.Unload();
            });
            desk.ShowModal(screen);
        };
        core::Identif identifiers;
        show(identifiers, "Identif");
        core::PPRT printers;
        show(printers, "PPRT");
    }

    void KeepTheCash()
    {
        desk.Visit([this](forms::Form& form) {
            auto& picker = dynamic_cast<core::Q_Date_2&>(form);
            desk.TakePicture(picker, "Q_Date_2");
            picker.Image2[core::Q_Date_2::AcceptDay].click();
        });
        desk.Visit([this](forms::Form& form) { SettleAnAct(dynamic_cast<J_CAISSE&>(form)); });
        main.Entry("mnu_Caisse")->trigger();
    }

    void SettleAnAct(J_CAISSE& cashDay)
    {
        const char* const tabs[] = {"Recap", "Actes-Regles", "Instances", "Depenses"};
        for (int tab = 0; tab < cashDay.SSTab1.count(); ++tab) {
            cashDay.SSTab1.setCurrentIndex(tab);
            desk.TakePicture(cashDay, QStringLiteral("J_CAISSE-") + tabs[tab]);
        }
        const QString balanceBefore = cashDay.RCP[J_CAISSE::NewBalance].text();
        const int settledBefore = cashDay.Grid2.Rows();

        cashDay.SSTab1.setCurrentIndex(J_CAISSE::PendingTab);
        cashDay.Image2[J_CAISSE::Correct].click();
        TourDesk::Require(cashDay.SSPanel2.isVisible(), "aucun acte en instance ce jour");
        cashDay.SSPanel2.Code.SetListIndex(data::PaymentCode::P);
        cashDay.SSPanel2.Amount.setFocus();
        QTest::keyClicks(&cashDay.SSPanel2.Amount, "1500");
        desk.TakePicture(cashDay, "J_CAISSE-Correction");
        desk.Answer("Correction enregistrée", "OK");
        cashDay.SSPanel2.Image3[CorrectionPanel::Accept].click();

        TourDesk::Require(cashDay.Grid2.Rows() == settledBefore + 1, "l'acte réglé n'a pas changé de liste");
        TourDesk::Require(cashDay.RCP[J_CAISSE::NewBalance].text() != balanceBefore, "le nouveau solde n'a pas bougé");
        cashDay.SSTab1.setCurrentIndex(J_CAISSE::RecapTab);
        desk.TakePicture(cashDay, "J_CAISSE-apres");
        PrintTheRecap(cashDay);
        cashDay.Image1[J_CAISSE::Quit].click();
    }

    void PrintTheRecap(J_CAISSE& cashDay)
    {
        const QString pdf = pictures + "/Recap.pdf";
        desk.Visit([this, pdf](forms::Form& form) {
            auto& preview = dynamic_cast<report::PreviewWindow&>(form);
            desk.TakePicture(preview, "Preview");
            TourDesk::Require(preview.SavePdf(pdf), "PDF non enregistré");
            QTest::keyClick(&preview, Qt::Key_Escape);
        });
        cashDay.Image2[J_CAISSE::PrintRecap].click();
        QTextStream(stdout) << "Récapitulatif : " << pdf << Qt::endl;
    }

    void SettleOfAPeriod()
    {
        desk.Visit([this](forms::Form& form) {
            auto& pending = dynamic_cast<F_Inst&>(form);
            desk.TakePicture(pending, "F_Inst-dates");
            QTest::keyClick(&pending.Dates.Text1[core::PeriodChooser::Day], Qt::Key_Return);
            desk.TakePicture(pending, "F_Inst");
            pending.Image1[F_Inst::Correct].click();
            pending.SSPanel2.Code.SetListIndex(data::PaymentCode::P);
            pending.SSPanel2.Amount.setText("900");
            desk.TakePicture(pending, "F_Inst-Correction");
            desk.Answer("Correction enregistrée", "OK");
            pending.SSPanel2.Image3[CorrectionPanel::Accept].click();
            desk.TakePicture(pending, "F_Inst-apres");
            pending.Image1[F_Inst::Quit].click();
        });
        main.Entry("mnu_Inst")->trigger();
    }

    /// Runs "1 sur 3" for the days since the last actualisation, which closes the day sheet too.
    void ThinTheActs()
    {
        desk.Visit([this](forms::Form& form) {
            auto& sheet = dynamic_cast<New_Act&>(form);
            desk.TakePicture(sheet, "New_Act");
            sheet.Option1[New_Act::OneInThree].click();
            sheet.Image2.click();
        });
        desk.Visit([this](forms::Form& form) {
            auto& period = dynamic_cast<New_Mecano&>(form);
            desk.TakePicture(period, "New_Mecano");
            period.SSCommand1.click();
            desk.TakePicture(period, "New_Mecano-dates");
            period.Image1[New_Mecano::CloseReminder].click();
            period.SSCommand2.click();
            desk.TakePicture(period, "New_Mecano-duree");
            period.Image1[New_Mecano::CloseEstimate].click();
            desk.Answer("Actualisation terminée ! ! !", "OK");
            desk.Answer("Modifications enregistrées avec succès", "OK");
            period.Image1[New_Mecano::Run].click();
        });
        main.Entry("NActes")->trigger();
    }

    void Quit()
    {
        desk.Answer("Veuiller Confirmer Fin de Travail !!", "Oui");
        desk.AtEnd([this] {
            const QString archive = host::PathIn(folder, "ARCHIVES/ZEP_ONE.MDB");
            TourDesk::Require(QFile::exists(archive), "pas de copie dans ARCHIVES");
            QTextStream(stdout) << "Copie d'archive : " << archive << Qt::endl;
        });
        main.Entry("mnuQ")->trigger();
        TourDesk::Require(false, "le programme ne s'arrête pas");
    }

    TourDesk& desk;
    core::Form1& main;
    QString folder;
    QString pictures;
};

QPalette DarkDesktop()
{
    QPalette palette(QColor(0x3a, 0x3f, 0x44), QColor(0x2a, 0x2e, 0x32));
    palette.setColor(QPalette::Base, QColor(0x1b, 0x1e, 0x20));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
    palette.setColor(QPalette::HighlightedText, QColor(0x1b, 0x1e, 0x20));
    return palette;
}

/// White on black, with yellow highlights.
QPalette HighContrastDesktop()
{
    QPalette palette(Qt::black, Qt::black);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText})
        palette.setColor(role, Qt::white);
    palette.setColor(QPalette::Base, Qt::black);
    palette.setColor(QPalette::Highlight, Qt::yellow);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    return palette;
}

} // namespace

int main(int argc, char* argv[])
{
    defaultHandler = qInstallMessageHandler(OmitSizeHints);
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString colours = arguments.value(3, "light");
    TourDesk::Require(arguments.size() >= 3 && arguments.size() <= 4 &&
                          QStringList{"light", "dark", "contrast"}.contains(colours),
                      "usage : tour CABINET IMAGES [light|dark|contrast]");
    const QString pictures = QDir(arguments[2]).absolutePath();
    const QString practice = pictures + "/cabinet";
    CopyPractice(arguments[1], practice);

    if (colours == "dark")
        QApplication::setPalette(DarkDesktop());
    if (colours == "contrast")
        QApplication::setPalette(HighContrastDesktop());
    forms::ApplyStyle(application);
    constexpr int expectedPictures = 133;
    TourDesk desk(pictures, expectedPictures);
    forms::SetDesk(&desk);
    forms::OnHelp(guide::ShowGuide);
    core::Form1 mainWindow(MenuScreens());
    forms::Guarded([&] {
        mainWindow.Load();
        mainWindow.show();
        Visit(desk, mainWindow, practice, pictures).Play();
    });
    return 1;
}
