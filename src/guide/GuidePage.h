#pragma once

#include <QTextBrowser>

namespace guide {

/// Shows a Markdown page in the program's fonts and colours, with pictures scaled down to the line width.
class GuidePage : public QTextBrowser {
    Q_OBJECT
public:
    GuidePage();

    /// The page's first line, its heading.
    QString Title() const;

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void changeEvent(QEvent* event) override;

private:
    void TakeColours();
    void DressText();
};

} // namespace guide
