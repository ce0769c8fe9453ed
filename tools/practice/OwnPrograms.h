#pragma once

#include <QString>
#include <QStringList>

namespace practice {

/// The path of a program that comes with this one, looked up in folders relative to this one's: those of an installed
/// program and of the build folder. Raises 53 when none has it.
QString OwnProgram(const QString& name, const QStringList& folders);

/// The program that opens practices.
QString PracticeProgram();

} // namespace practice
