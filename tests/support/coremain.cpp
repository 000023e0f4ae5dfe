#include "tests/support/runclasses.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return runClasses(argc, argv);
}
