#include "app/start.h"

#include "core/kalibrierung.h"
#include "core/produkt.h"
#include "wizard/dialogs.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <QWidget>

#include <csignal>
#include <memory>

namespace {

bool debugFlag = false;

} // namespace

bool basKalibrierungWendral::debugMode()
{
    return debugFlag;
}

bool basKalibrierungWendral::asksForDebugMode(const QString &commandLine)
{
    return commandLine.toUpper().contains(u"DEBUG"_qs);
}

void basKalibrierungWendral::Main(const QString &commandLine, const QLocale &locale,
                                  WindowService &windows, Dialogs &dialogs)
{
    auto document = std::make_unique<Kalibrierung>(locale, &windows);
    QObject *window = nullptr;
    const auto connection =
        QObject::connect(document.get(), &Kalibrierung::BeforeShowAssistent, document.get(),
                         [&window](QObject *&form) { window = form; });
    document->ShowAssistent();
    QObject::disconnect(connection);
    document.release()->setParent(window);

    debugFlag = asksForDebugMode(commandLine);
    if (debugFlag)
        dialogs.message(qobject_cast<QWidget *>(window), Dialogs::Icon::Information,
                        produkt::name(), u"Debug-Modus aktiviert"_qs);
}

void takeFileSizeLimitAsError()
{
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

bool installGermanTexts(QCoreApplication &application)
{
    auto *texts = new QTranslator(&application);
    const QString name = QStringLiteral("qtbase_de");
    return (texts->load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)) ||
            texts->load(name, QCoreApplication::applicationDirPath() + u"/translations"_qs)) &&
           QCoreApplication::installTranslator(texts);
}
