#include "app/ausgabe.h"
#include "app/fensterdienst.h"
#include "app/htmlhelp.h"
#include "app/start.h"
#include "app/wiederherstellung.h"
#include "app/wiederherstellungsfrage.h"
#include "core/produkt.h"
#include "core/userlocale.h"
#include "protocol/windows/protocolservices.h"
#include "wizard/qtdialogs.h"

#include <QApplication>
#include <QPixmapCache>
#include <QSettings>
#include <QStandardPaths>

#include <array>
#include <clocale>

namespace {

// Of this user, and never beside the user's files.
QString recoveryFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u'/' +
           produkt::name() + u"/Wiederherstellung"_qs;
}

} // namespace

int main(int argc, char **argv)
{
    // Qt gets the program's name only, so that it takes no word of the command line for itself.
    int qtCount = 1;
    std::array<char *, 2> qtWords{argv[0], nullptr};
    QApplication application(qtCount, qtWords.data());
    // The application object takes over the environment's locale; libraries that write numbers into
    // files need the point.
    std::setlocale(LC_NUMERIC, "C");
    takeFileSizeLimitAsError();
    QApplication::setApplicationName(produkt::name());
    QGuiApplication::setDesktopFileName(QStringLiteral("kalibrierung-wendral"));
    // Qt 6.4 keeps the name of every icon that this cache has dropped, for ever, and each file
    // dialog brings a dozen new ones: 3 KB a dialog. What is not taken in leaves no name, and
    // drawing the few icons anew costs nothing that could be measured.
    QPixmapCache::setCacheLimit(0);
    installGermanTexts(application);
    const QLocale locale = userLocale();
    QLocale::setDefault(locale);

    QStringList words;
    for (int i = 1; i < argc; ++i)
        words.append(QString::fromLocal8Bit(argv[i]));

    QSettings settings(QSettings::NativeFormat, QSettings::UserScope, produkt::name());
    settings.setFallbacksEnabled(false);
    QtDialogs dialogs;
    HTMLHelp help(QApplication::applicationDirPath(), openWithHelpViewer);
    PlatformProtocolServices protocolServices;
    const ausgabe::Dienste output{protocolServices, dialogs, ausgabe::chooseSpreadsheet,
                                  [] { return QDateTime::currentDateTime(); }};
    AssistentDienste services{dialogs, settings, help, QApplication::applicationDirPath()};
    services.showProtocol = [&output](Kalibrierung &document, QWidget *owner) {
        ausgabe::showProtocol(output, document, owner);
    };
    services.showExport = [&output](Kalibrierung &document, QWidget *owner) {
        ausgabe::showExport(output, document, owner);
    };
    services.grid = GridEnvironment::system(locale);
    const auto ask = [&locale](QWidget *owner, const Wiederherstellung::Fund &found) {
        return frageNachWiederherstellung(owner, found, locale);
    };
    Wiederherstellung recovery({recoveryFolder(), QDateTime::currentDateTime, ask}, dialogs);
    Fensterdienst windows(services, &recovery);
    basKalibrierungWendral::Main(words.join(u' '), locale, windows, dialogs);
    recovery.offer();
    return QApplication::exec();
}
