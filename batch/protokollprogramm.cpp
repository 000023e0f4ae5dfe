#include "batch/protokollprogramm.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cerrno>
#include <system_error>

#ifdef Q_OS_UNIX
#include <unistd.h>
#else
#include <process.h>
#endif

QString werdeProtokollprogramm(char **words)
{
    QString name = QStringLiteral("kalibrierung-protokoll");
#ifdef Q_OS_WIN
    name += QStringLiteral(".exe");
#endif
    const QString path = QDir(QCoreApplication::applicationDirPath()).filePath(name);
    const QByteArray file = QFile::encodeName(path);
#ifdef Q_OS_UNIX
    execv(file.constData(), words);
#else
    _execv(file.constData(), words);
#endif
    const std::error_code reason(errno, std::generic_category());
    return u"Der Programmteil für Protokolle, „%1“, kann nicht gestartet werden (%2)."_qs.arg(
        path, QString::fromStdString(reason.message()));
}
