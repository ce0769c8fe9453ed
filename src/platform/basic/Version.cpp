#include "platform/basic/Version.h"

namespace basic {

QString Version()
{
    return QStringLiteral(ZEP_VERSION);
}

} // namespace basic
