#pragma once

#include <QStringList>
#include <QWidget>

namespace tests {

/// Texts that tend to break programs: quotes and statements, wildcards, huge numbers, blanks of every kind, control
/// characters, many scripts, markup and shell commands.
QStringList HostileTexts();

/// Replaces the field's text as an input method does, through its filter.
void Enter(QWidget& field, const QString& text);

} // namespace tests
