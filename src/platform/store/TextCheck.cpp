#include "platform/store/TextCheck.h"

#include "platform/store/Sqlite.h"

#include <QUtf8StringView>
#include <sqlite3.h>

namespace store {
namespace {

void IsWellFormed(sqlite3_context* call, int /*count*/, sqlite3_value** arguments)
{
    const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(*arguments));
    const QUtf8StringView view(text, text == nullptr ? 0 : sqlite3_value_bytes(*arguments));
    const bool hasNull = QByteArrayView(view.data(), view.size()).contains('\0');
    sqlite3_result_int(call, !hasNull && view.isValidUtf8() ? 1 : 0);
}

} // namespace

void DefineTextCheck(sqlite3* database)
{
    Check(database, sqlite3_create_function_v2(database, "is_well_formed", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                               nullptr, IsWellFormed, nullptr, nullptr, nullptr));
}

} // namespace store
