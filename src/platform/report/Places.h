#pragma once

#include <QString>
#include <functional>

namespace report {

/// A text of a template with its places filled.
struct FilledText {
    QString text;
    bool printed = false; ///< it has no place, or one of them had a text
};

/// Puts into each {place}, or {place|words for when it is empty}, what `valueOf` gives for its name, once: braces in
/// what is put in stay as they are.
FilledText FillPlaces(const QString& text, const std::function<QString(const QString& place)>& valueOf);

} // namespace report
