#include "platform/paper/OwnFonts.h"

#include <QDir>
#include <QFontDatabase>

namespace paper {

void LoadOwnFonts(const QString& programFolder)
{
    for (const QFileInfo& font : QDir(programFolder + "/fonts").entryInfoList({"*.ttf"}, QDir::Files))
        QFontDatabase::addApplicationFont(font.filePath());
}

} // namespace paper
