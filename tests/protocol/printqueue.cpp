#include "tests/protocol/printqueue.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// Milliseconds, of a machine that has much else to do: until the daemon listens, and until a job
// arrives, which another process composes meanwhile.
constexpr int patienceForDaemon = 60'000;
constexpr int patienceForJob = 240'000;

QString tool(const QString &name)
{
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {QStringLiteral("/usr/sbin")})
                           : found;
}

bool write(const QString &path, const QString &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0;
}

} // namespace

PrintQueue::~PrintQueue()
{
    if (m_socket >= 0) {
        ::shutdown(m_socket, SHUT_RDWR);
        ::close(m_socket);
    }
    if (m_listener.joinable())
        m_listener.join();
    if (m_daemon.state() != QProcess::NotRunning) {
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }
}

bool PrintQueue::writeConfiguration()
{
    // Backends run as another user and must get at their files.
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7055));
    for (const char *name : {"root", "cache", "state", "spool", "log"})
        QDir(m_folder.path()).mkdir(QLatin1String(name));
    const QString folder = m_folder.path();
    return write(m_folder.filePath(QStringLiteral("cupsd.conf")),
                 u"Listen %1\nBrowsing No\nDefaultAuthType None\n"
                 u"<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
                 u"<Location /admin>\nOrder allow,deny\nAllow all\n</Location>\n"
                 u"<Policy default>\n<Limit All>\nOrder deny,allow\nAllow all\n</Limit>\n"
                 u"</Policy>\n"_qs.arg(server())) &&
           write(m_folder.filePath(QStringLiteral("cups-files.conf")),
                 u"ServerRoot %1/root\nCacheDir %1/cache\nStateDir %1/state\n"
                 u"RequestRoot %1/spool\nAccessLog %1/log/access\nErrorLog %1/log/error\n"
                 u"PageLog %1/log/page\nSandboxing relaxed\n"_qs.arg(folder));
}

bool PrintQueue::listen()
{
    m_socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *plain = reinterpret_cast<sockaddr *>(&address);
    if (m_socket < 0 || ::bind(m_socket, plain, size) != 0 || ::listen(m_socket, 1) != 0 ||
        ::getsockname(m_socket, plain, &size) != 0)
        return false;
    m_port = ntohs(address.sin_port);
    m_listener = std::thread([this] {
        pollfd waiting{m_socket, POLLIN, 0};
        if (::poll(&waiting, 1, patienceForJob) != 1)
            return;
        const int connection = ::accept(m_socket, nullptr, nullptr);
        char buffer[65536];
        while (connection >= 0) {
            const ssize_t count = ::read(connection, buffer, sizeof buffer);
            if (count <= 0)
                break;
            m_bytes.append(buffer, count);
        }
        ::close(connection);
    });
    return true;
}

bool PrintQueue::start()
{
    const QString cupsd = tool(QStringLiteral("cupsd"));
    const QString lpadmin = tool(QStringLiteral("lpadmin"));
    if (cupsd.isEmpty() || lpadmin.isEmpty()) {
        m_reason = u"cupsd and lpadmin are not installed."_qs;
        return false;
    }
    if (!writeConfiguration() || !listen()) {
        m_reason = u"No folder or port for a queue."_qs;
        return false;
    }
    m_daemon.start(cupsd, {u"-f"_qs, u"-c"_qs, m_folder.filePath(u"cupsd.conf"_qs), u"-s"_qs,
                           m_folder.filePath(u"cups-files.conf"_qs)});
    QElapsedTimer time;
    time.start();
    while (m_daemon.state() != QProcess::NotRunning && !QFileInfo::exists(server()) &&
           time.elapsed() < patienceForDaemon)
        m_daemon.waitForFinished(20);
    QProcess admin;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("CUPS_SERVER"), server());
    admin.setProcessEnvironment(environment);
    admin.start(lpadmin, {u"-p"_qs, name(), u"-E"_qs, u"-v"_qs,
                          u"socket://127.0.0.1:%1"_qs.arg(m_port), u"-m"_qs, u"raw"_qs});
    if (admin.waitForFinished() && admin.exitCode() == 0)
        return true;
    m_reason = u"No queue can be made: "_qs + QString::fromUtf8(admin.readAllStandardError());
    return false;
}

QByteArray PrintQueue::firstJob()
{
    if (m_listener.joinable())
        m_listener.join();
    return m_bytes;
}
