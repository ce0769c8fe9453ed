#include "Guide_visit.h"

#include "TourDesk.h"

#include "core/Form1.h"
#include "guide/Guide.h"

#include <QApplication>
#include <QTest>

namespace tour {

void VisitGuide(TourDesk& desk, core::Form1& main)
{
    desk.Visit([&desk](forms::Form& form) {
        auto& guide = dynamic_cast<guide::Guide&>(form);
        TourDesk::Require(guide.Page.source().fileName() == "index.md", "le guide ne s'ouvre pas au sommaire");
        desk.TakePicture(guide, "Guide");
        for (const QString& page : guide::Guide::Pages()) {
            guide.Page.setSource(guide.Page.source().resolved(QUrl(page)));
            const int beside = guide.height() - guide.Page.viewport()->height();
            guide.resize(guide.width(), beside + static_cast<int>(guide.Page.document()->size().height()));
            QApplication::processEvents();
            desk.TakeLongPicture(guide, "Guide-" + page.chopped(3));
        }
        QTest::keyClick(&guide, Qt::Key_Escape);
    });
    main.activateWindow();
    TourDesk::Require(QTest::qWaitForWindowActive(&main), "la fenêtre principale ne revient pas devant");
    QTest::keyClick(&main, Qt::Key_F1);
}

} // namespace tour
