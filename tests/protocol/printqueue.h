#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <thread>

/// A print system of its own with one queue, whose jobs end in memory. Needs cupsd and lpadmin.
class PrintQueue
{
public:
    PrintQueue() = default;
    ~PrintQueue();
    Q_DISABLE_COPY_MOVE(PrintQueue)

    /// \returns whether the queue is there; reason() says why not.
    bool start();
    const QString &reason() const { return m_reason; }

    QString name() const { return QStringLiteral("protokolltest"); }
    /// The value of CUPS_SERVER under which programs find it.
    QString server() const { return m_folder.filePath(QStringLiteral("s")); }

    /// Waits for the end of the first job. \returns its bytes.
    QByteArray firstJob();

private:
    bool writeConfiguration();
    bool listen();

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_reason;
    int m_socket = -1;
    int m_port = 0;
    std::thread m_listener;
    QByteArray m_bytes;
};
