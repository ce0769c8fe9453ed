#pragma once

#include <QString>
#include <functional>

namespace pages {

/// A text of a template with its placeholders filled in.
struct FilledText {
    QString text;
    bool printed = false; ///< false if all of its placeholders were empty
};

/// Replaces {name} and {name|text for an empty value} by `valueOf(name)`. Braces in values are literal.
FilledText FillPlaceholders(const QString& text, const std::function<QString(const QString& name)>& valueOf);

} // namespace pages
