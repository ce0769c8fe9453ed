#include "platform/forms/TypeAhead.h"

#include <QApplication>

namespace forms {

namespace {

/// The text without leading blanks, case and accents.
QString Folded(const QString& text)
{
    QString folded;
    for (const QChar character : text.normalized(QString::NormalizationForm_KD)) {
        const bool isLeadingBlank = folded.isEmpty() && character.isSpace();
        if (character.category() != QChar::Mark_NonSpacing && !isLeadingBlank)
            folded += character.toCaseFolded();
    }
    return folded;
}

} // namespace

std::optional<int> TypeAhead::Find(const QString& typed, int rows, int currentRow,
                                   const std::function<QString(int row)>& nameOf)
{
    const bool goesOn = sinceLastKey.isValid() && !sinceLastKey.hasExpired(QApplication::keyboardInputInterval());
    sinceLastKey.start();
    const QString key = Folded(typed);
    if (key.isEmpty() && (!goesOn || letters.isEmpty()))
        return std::nullopt;
    const bool repeats = goesOn && letters == key;
    letters = goesOn && !repeats ? letters + (key.isEmpty() ? typed : key) : key;

    // A continued text may still match the current row; a new one starts after it.
    const int start = qMax(0, letters.size() > key.size() ? currentRow : currentRow + 1);
    for (int step = 0; step < rows; ++step) {
        const int row = (start + step) % rows;
        if (Folded(nameOf(row)).startsWith(letters))
            return row;
    }
    return std::nullopt;
}

} // namespace forms
