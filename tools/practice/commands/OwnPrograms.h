#pragma once

#include <QString>
#include <QStringList>

namespace practice {

/// The path of a program installed or built with this one; `folders` are relative to this one's folder. Raises 53 if it
/// is in none of them.
QString OwnProgram(const QString& name, const QStringList& folders);

/// The path of zep_lumo.
QString PracticeProgram();

} // namespace practice
