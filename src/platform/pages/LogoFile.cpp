#include "platform/pages/LogoFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace pages {
namespace {

constexpr qint64 LargestPicture = qint64{2} << 20;

bool IsPicture(const QByteArray& file)
{
    return file.startsWith("\x89PNG\r\n\x1a\n") || file.startsWith("\xff\xd8\xff");
}

} // namespace

void ReadLogoFile(const QDir& folder, Logo& logo, QList<Fault>& faults)
{
    const auto refuse = [&](const QString& reason) {
        faults.append({logo.line, QStringLiteral("logo « %1 » : %2").arg(logo.file, reason)});
    };
    QFile file(folder.filePath(logo.file));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return refuse("le fichier n'existe pas ou ne peut pas être lu");
    logo.picture = file.read(LargestPicture + 1);
    if (logo.picture.size() > LargestPicture)
        return refuse("le fichier dépasse 2 Mo");
    if (!IsPicture(logo.picture))
        refuse("ce n'est pas une image PNG ou JPEG");
}

} // namespace pages
