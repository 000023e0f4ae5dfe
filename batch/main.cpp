#include "batch/programm.h"
#include "batch/protokollprogramm.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Optionen options = programm::optionen(argc, argv);
    const bool runs = options.fehler.isEmpty() && !options.hilfe && !options.version;
    if (runs && !options.protokoll.isEmpty())
        return programm::scheitere(werdeProtokollprogramm(argv));
    return programm::laufe(options);
}
