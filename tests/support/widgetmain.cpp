#include "tests/support/runclasses.h"

#include <QApplication>

#include <clocale>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    // The application object takes over the environment's locale; numbers in C stay with a point.
    std::setlocale(LC_NUMERIC, "C");
    return runClasses(argc, argv);
}
