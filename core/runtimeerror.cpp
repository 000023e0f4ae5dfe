#include "core/runtimeerror.h"

RunTimeError::RunTimeError(ErrorNumber number, const QString &detail)
    : m_number(number)
    , m_description(detail.isEmpty() ? textOf(number) : textOf(number) + u": "_qs + detail)
    , m_what(m_description.toUtf8())
{
}

QString RunTimeError::textOf(ErrorNumber number)
{
    switch (number) {
    case ErrorNumber::InvalidProcedureCall:
        return u"Ungültiger Prozeduraufruf oder ungültiges Argument"_qs;
    case ErrorNumber::Overflow:
        return u"Überlauf"_qs;
    case ErrorNumber::OutOfMemory:
        return u"Nicht genügend Speicher"_qs;
    case ErrorNumber::DivisionByZero:
        return u"Division durch Null"_qs;
    case ErrorNumber::TypeMismatch:
        return u"Typen unverträglich"_qs;
    case ErrorNumber::FileNotFound:
        return u"Datei nicht gefunden"_qs;
    case ErrorNumber::DeviceIo:
        return u"E/A-Fehler beim Datenträgerzugriff"_qs;
    case ErrorNumber::DiskFull:
        return u"Datenträger voll"_qs;
    case ErrorNumber::PermissionDenied:
        return u"Zugriff verweigert"_qs;
    case ErrorNumber::PathFileAccess:
        return u"Fehler beim Zugriff auf Pfad/Datei"_qs;
    case ErrorNumber::PathNotFound:
        return u"Pfad nicht gefunden"_qs;
    case ErrorNumber::InvalidUseOfNull:
        return u"Unzulässige Verwendung von Null"_qs;
    case ErrorNumber::InvalidFileFormat:
        return u"Ungültiges Dateiformat"_qs;
    case ErrorNumber::InvalidPropertyValue:
        return u"Ungültiger Eigenschaftswert"_qs;
    }
    Q_UNREACHABLE();
}

QString errorReport(const QString &context, const RunTimeError &error)
{
    return errorReport(context, error.number(), error.description());
}

QString errorReport(const QString &context, std::int32_t number, const QString &description)
{
    return context + u"\r\n"_qs + description + u" ("_qs + QString::number(number) + u')';
}
