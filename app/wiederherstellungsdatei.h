#pragma once

#include "wizard/frmassistent.h"

#include <QDateTime>

class Kalibrierung;
class QLocale;

/// The recovery file: unsaved work as a calibration file, which the program itself can open, with
/// one more row for what such a file has no place for.
class Wiederherstellungsdatei
{
public:
    /// Writes document and \a work to \a path, readable for nobody else; the file there is the old
    /// one or, in the end, the whole new one. The document is not changed. Raises 7, 57, 61, 70, 75
    /// or 76.
    static void write(const QString &path, const Kalibrierung &document, const Arbeitsstand &work,
                      const QDateTime &time);

    /// Reads and checks the file. Raises 7, 53, 57, 70, 75, 76, or 321 for what is none.
    explicit Wiederherstellungsdatei(const QString &path);

    /// Written in a form that this program doesn't know yet; nothing else is known of it then.
    bool isOfNewerProgram() const { return m_newer; }
    /// Whether \a locale reads the numbers, which are kept as texts, as they were meant.
    bool hasNumbersOf(const QLocale &locale) const;

    const QDateTime &time() const { return m_time; }
    const Arbeitsstand &work() const { return m_work; }

    /// Puts the work into \a document in the place of its own. Raises what reading raises, and the
    /// document is unchanged then.
    void loadInto(Kalibrierung &document) const;

private:
    QString m_path;
    QDateTime m_time;
    Arbeitsstand m_work;
    bool m_newer = false;
    QString m_numberStyle;
    QByteArray m_content; ///< of a document that no calibration file can hold
};
