#pragma once

#include "platform/pages/Content.h"
#include "platform/pages/Page.h"
#include "platform/pages/Placeholders.h"

namespace pages {

/// The page layout of a report. Page breaks are computed at once, pages on demand.
///
/// The first page of a design with a chart has it above the rows, unless there are none. Depends only on template and
/// content, not on display or fonts: the same input always gives the same pages. Every page has the column heads. A
/// group heading is never separated from its first row, a subtotal from its last row; totals and ending follow at least
/// one row. A continued group repeats its heading with "(suite)". Heading and ending lines whose placeholders are all
/// empty are omitted. A report without rows has one page.
class PageLayout {
public:
    PageLayout(Template layoutDesign, Content read);

    const Template& Design() const { return design; }
    const Content& Data() const { return content; }
    int PageCount() const { return static_cast<int>(pageStarts.size()); }
    Page MakePage(int index) const;

private:
    enum class Part : quint8 { Row, GroupHead, Subtotal, Totals, Empty, Gap, Ending };
    /// A part of the body that isn't split across pages.
    struct Block {
        Part part;
        bool staysWithPrevious; ///< no page starts with it
        int index;              ///< of the row, of the first row of the group, of the ending line
        int count;              ///< rows of the group
    };
    struct Cell {
        double left;
        double width;
        bool hidden;
    };

    void SetColumnWidths();
    void AddBlocks();
    void AddGroup(int first, int end);
    void BreakPages();
    double HeightOf(const Block& block) const;
    double ColumnHeadsHeight() const;
    double BodyTop(int page) const;
    double BodyBottom() const;
    double TableRight() const { return cells.back().left + cells.back().width; }
    bool ContinuesGroup(std::size_t block) const;
    bool HasNoValue(int field) const;
    bool SameGroup(int row, int otherRow) const;

    QString ValueOf(const QString& name, int page) const;
    FilledText Filled(const QString& text, int page) const;
    FilledText FilledFromRow(const QString& text, int row) const;

    double AddHeading(Page& page, int index) const;
    Chart MakeChart() const;
    double AddDesignedChart(Page& page, double top, int index) const;
    void AddColumnHeads(Page& page, double top) const;
    void AddHeadsAbove(Page& page, double top, double height) const;
    void AddFooter(Page& page, int index) const;
    void AddBlock(Page& page, const Block& block, double top, int pageIndex) const;
    void AddRow(Page& page, int row, double top) const;
    void AddGroupHead(Page& page, int row, double top, bool continued) const;
    void AddSums(Page& page, const QString& label, const Block& block, double top) const;
    double FirstSumLeft() const;
    QString SumText(const Column& summed, std::size_t column, const Block& block) const;
    void AddEnding(Page& page, const EndingLine& line, double top, int pageIndex) const;
    void AddCell(Page& page, std::size_t column, double top, double height, const QString& text, bool bold) const;
    void AddLabel(Page& page, double left, double top, double width, double height, const QString& text,
                  bool bold) const;

    Template design;
    Content content;
    std::vector<Cell> cells;
    std::vector<Block> blocks;
    std::vector<std::size_t> pageStarts; ///< the first block of each page
    double lineHeight;
};

} // namespace pages
