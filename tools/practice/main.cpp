#include "platform/host/Console.h"
#include "practice/commands/CommandLine.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const auto in = host::OpenStandard(host::Standard::Input);
    const auto out = host::OpenStandard(host::Standard::Output);
    const auto err = host::OpenStandard(host::Standard::Errors);
    QTextStream input(in.get());
    QTextStream output(out.get());
    QTextStream errors(err.get());
    return practice::RunCommand(QCoreApplication::arguments().mid(1), {input, output, errors});
}
