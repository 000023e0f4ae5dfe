#include "batch/auswertungslauf.h"
#include "core/userlocale.h"

#include <QCoreApplication>

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

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    // The application object takes over the environment's locale; numbers in C stay with a point.
    std::setlocale(LC_NUMERIC, "C");
#ifdef SIGXFSZ
    // A file that reaches the user's size limit is an error to report, not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
#endif
    const Optionen options = leseOptionen(QCoreApplication::arguments().sliced(1), userLocale(),
                                          QDateTime::currentDateTime());
    return auswertungslauf(options, ausgabeAuf(stdout), ausgabeAuf(stderr));
}
