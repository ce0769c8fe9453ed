#pragma once

#include <QString>
#include <functional>

namespace pages {

/// A text of a template with its placeholders filled in.
struct FilledText {
    QString text;
    bool printed = false; ///< it has no placeholder, or one of them had a text
};

/// Replaces each {name}, or {name|text for an empty value}, by what `valueOf` gives for the name. Braces in a value
/// stay as they are.
FilledText FillPlaceholders(const QString& text, const std::function<QString(const QString& name)>& valueOf);

} // namespace pages
