// The program with protocols: the one without goes on as this one where they are asked for.

#include "batch/programm.h"
#include "protocol/pages/protocolpdf.h"

#include <QGuiApplication>
#include <QtGlobal>

#include <cstdio>

namespace {

// The error output belongs to the files' own lines; the graphics library's remarks about a missing
// session don't concern somebody who has no display.
void tellGraveThings(QtMsgType type, const QMessageLogContext & /*where*/, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace

int main(int argc, char **argv)
{
    qInstallMessageHandler(tellGraveThings);
    // It paints into files: no display is needed, and one that is there isn't touched.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt gets the program's name only, so that it takes no word of the command line for itself.
    int qtCount = 1;
    const QGuiApplication application(qtCount, argv);
    return programm::laufe(programm::optionen(argc, argv),
                           [](Kalibrierung &document, int type, const QString &target) {
                               writeProtocolPdf(document, static_cast<ProtocolType>(type), target);
                           });
}
