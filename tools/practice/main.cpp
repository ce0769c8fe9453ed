#include "practice/commands/CommandLine.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QTextStream input(stdin);
    QTextStream output(stdout);
    QTextStream errors(stderr);
    return practice::RunCommand(QCoreApplication::arguments().mid(1), {input, output, errors});
}
