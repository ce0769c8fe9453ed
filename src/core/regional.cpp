#include "core/regional.h"

#include "core/globals.h"
#include "platform/forms/Desk.h"
#include "platform/host/Host.h"

#include <optional>

using host::LocaleSetting;

namespace core {

namespace {

std::optional<QString> FirstDecimalMark;

} // namespace

void SetRegionalFormats()
{
    if (!host::SetLocaleInfo(LocaleSetting::ShortDate, "dd/MM/yyyy")) {
        forms::MsgBox("Failed");
        return;
    }
    SetDecimalMark(".", 0);
}

int SetDecimalMark(const QString& mark, int RestoreAfter)
{
    const QString present = host::LocaleInfo(LocaleSetting::DecimalMark);
    if (!FirstDecimalMark)
        FirstDecimalMark = present;

    bool done = true;
    if (mark != present)
        done = host::SetLocaleInfo(LocaleSetting::DecimalMark, mark);
    if (done && *FirstDecimalMark != present && RestoreAfter != 0)
        done = host::SetLocaleInfo(LocaleSetting::DecimalMark, *FirstDecimalMark);
    return done ? True : 0;
}

void ChangeResolution(int width, int height)
{
    host::ChangeWorkingArea({width, height});
}

} // namespace core
