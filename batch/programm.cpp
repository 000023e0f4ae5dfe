#include "batch/programm.h"

#include "core/userlocale.h"

#include <QDateTime>

#include <clocale>
#include <csignal>
#include <cstdio>

namespace {

Ausgabe ausgabeAuf(std::FILE *stream)
{
    return [stream](const QByteArray &bytes) {
        const auto size = static_cast<std::size_t>(bytes.size());
        return std::fwrite(bytes.constData(), 1, size, stream) == size && std::fflush(stream) == 0;
    };
}

} // namespace

Optionen programm::optionen(int count, char **words)
{
    // The application object takes over the environment's locale; numbers in C stay with a point.
    std::setlocale(LC_NUMERIC, "C");
    QStringList arguments;
    for (int i = 1; i < count; ++i)
        arguments += QString::fromLocal8Bit(words[i]);
    return leseOptionen(arguments, userLocale(), QDateTime::currentDateTime());
}

int programm::laufe(const Optionen &options, const Protokollschreiber &writeProtocol)
{
#ifdef SIGXFSZ
    // A file that reaches the user's size limit is an error to report, not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
#endif
#ifdef SIGPIPE
    // Nor is a reader of the output that has gone: the files are written nevertheless.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    return auswertungslauf(options, ausgabeAuf(stdout), ausgabeAuf(stderr), writeProtocol);
}

int programm::scheitere(const QString &fault)
{
    ausgabeAuf(stderr)(u"kalibrierung-auswertung: %1\n"_qs.arg(fault).toUtf8());
    return 1;
}
