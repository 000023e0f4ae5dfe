#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

/// One cell as another program reads it.
struct GeleseneZelle
{
    QString formel;  ///< with "=", empty where the cell has none
    QJsonValue wert; ///< undefined where the cell is empty
    QString art;     ///< n, s, b, e as openpyxl names kinds
    QString zahlenformat;

    bool leer() const
    {
        return wert.isUndefined() || wert.isNull() || wert.toString(u"x"_qs).isEmpty();
    }
};

/// A workbook as openpyxl reads it.
class GeleseneMappe
{
public:
    /// Whether Debian's Python with openpyxl is there.
    static bool moeglich();
    /// Empty where the file can't be read; the reason is printed.
    static GeleseneMappe lies(const QString &path);
    /// Numbers of rows and first and last row of each sheet, for large files.
    static QJsonObject liesKurz(const QString &path);

    QStringList blaetter() const { return m_sheets.keys(); }
    QStringList zellen(const QString &sheet) const { return m_sheets[sheet].toObject().keys(); }
    GeleseneZelle zelle(const QString &sheet, const QString &address) const;
    /// The first cell of the column that holds \a text; its row number, 0 where there is none.
    int zeileMit(const QString &sheet, QChar column, const QString &text) const;

private:
    QJsonObject m_sheets;
};

/// Runs a program of the system; its standard output. \a good tells whether it ended well.
QByteArray starteProgramm(const QString &program, const QStringList &arguments, bool *good,
                          int milliseconds = 120000);
