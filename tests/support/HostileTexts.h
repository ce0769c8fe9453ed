#pragma once

#include <QStringList>
#include <QWidget>

namespace tests {

/// Texts that programs have stumbled over: quotes and statements, wildcards, numbers past all bounds, blanks of every
/// kind, control characters, letters of many scripts, what other programs would run.
QStringList HostileTexts();

/// Enters the text at once, as an input method does, in place of what the field holds and through its filter.
void Enter(QWidget& field, const QString& text);

} // namespace tests
