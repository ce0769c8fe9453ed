#pragma once

#include <QString>

namespace basic {

/// The one exception type of the program: a numbered run-time error with its French description.
///
/// A refusal that the user can mend is a message box and never this.
struct RuntimeError {
    int number = 0;
    QString description;
};

/// The error `number` with its usual description; `detail` replaces the description's "|" place where it has one.
/// A number without a usual description reads "Erreur définie par l'application ou par l'objet".
RuntimeError Error(int number, const QString& detail = {});

} // namespace basic
