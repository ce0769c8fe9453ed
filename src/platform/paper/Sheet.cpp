#include "platform/paper/Sheet.h"

namespace paper {

QPageLayout SheetOf(const pages::Template& design)
{
    const bool isLandscape = design.paper.width() > design.paper.height();
    const QSizeF portrait = isLandscape ? design.paper.transposed() : design.paper;
    QPageLayout sheet(QPageSize(portrait, QPageSize::Millimeter, {}, QPageSize::FuzzyMatch),
                      isLandscape ? QPageLayout::Landscape : QPageLayout::Portrait, {});
    sheet.setMode(QPageLayout::FullPageMode);
    return sheet;
}

} // namespace paper
