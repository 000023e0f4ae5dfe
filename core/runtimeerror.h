#pragma once

#include <QString>

#include <cstdint>
#include <exception>

/// Numbers of the run-time errors that the document raises.
enum class ErrorNumber : std::int32_t {
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    DivisionByZero = 11,
    TypeMismatch = 13,
    FileNotFound = 53,
    DeviceIo = 57,
    DiskFull = 61,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    InvalidUseOfNull = 94,
    InvalidFileFormat = 321,
    InvalidPropertyValue = 380,
};

/// A numbered run-time error. It is raised by the document and caught before it reaches an event
/// loop.
class RunTimeError : public std::exception
{
public:
    /// \a detail, when given, follows the number's own German text after a colon and a blank.
    explicit RunTimeError(ErrorNumber number, const QString &detail = {});

    std::int32_t number() const { return static_cast<std::int32_t>(m_number); }
    ErrorNumber errorNumber() const { return m_number; }
    /// German, one sentence without a full stop; this is what users read.
    const QString &description() const { return m_description; }
    const char *what() const noexcept override { return m_what.constData(); }

    /// The German text of \a number.
    static QString textOf(ErrorNumber number);

private:
    ErrorNumber m_number;
    QString m_description;
    QByteArray m_what;
};

/// The one form in which a failure is shown: \a context (ends in a colon), CR LF, description, "
/// (number)".
QString errorReport(const QString &context, const RunTimeError &error);
/// The same for a failure that came from elsewhere with its own number.
QString errorReport(const QString &context, std::int32_t number, const QString &description);
