#include "platform/forms/Guard.h"

#include "platform/basic/RuntimeError.h"
#include "platform/forms/Desk.h"

#include <QCoreApplication>
#include <QScopedValueRollback>
#include <exception>

namespace forms {

namespace {

constexpr int ExitAfterError = 1;

std::function<void()>& ClosingStep()
{
    static std::function<void()> step;
    return step;
}

void RunClosingStep()
{
    if (!ClosingStep())
        return;
    try {
        ClosingStep()();
    } catch (...) { // the program ends anyway: ignore a second error
    }
}

void ReportFatal(const basic::RuntimeError& error)
{
    static bool reporting = false;
    if (reporting)
        return;
    const QScopedValueRollback<bool> report(reporting, true);

    MsgBox(QStringLiteral("Erreur d'exécution '%1' :\n").arg(error.Number()) + error.Description(), Icon::Critical,
           QCoreApplication::applicationName());
    RunClosingStep();
    TheDesk().EndProgram(ExitAfterError);
}

void RunReporting(const std::function<void()>& handler)
{
    try {
        handler();
    } catch (const ProgramEnded&) {
        throw;
    } catch (const basic::RuntimeError& error) {
        ReportFatal(error);
    } catch (const std::exception& failure) {
        ReportFatal(basic::RuntimeError::Described(basic::Error::Internal, QStringLiteral("Erreur interne : ") +
                                                                               QString::fromLocal8Bit(failure.what())));
    }
}

} // namespace

void Guarded(const std::function<void()>& handler)
{
    try {
        RunReporting(handler);
    } catch (const ProgramEnded&) { // the desk has recorded the exit code
    }
}

void OnFatalError(std::function<void()> closingStep)
{
    ClosingStep() = std::move(closingStep);
}

} // namespace forms
