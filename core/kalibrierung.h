#pragma once

#include "core/auswertung.h"
#include "core/keyedstore.h"
#include "core/merkmal.h"
#include "core/pruefmerkmal.h"
#include "core/values.h"
#include "core/windowservice.h"

#include <QByteArray>
#include <QObject>

#include <cstdint>
#include <functional>

/// The calibration document: every entry of one calibration in one keyed store, its evaluation, its
/// file.
///
/// Getters read the store and convert; a stored text that does not convert raises the conversion's
/// error (RunTimeError 13, 6 or 94). Getters that read plainly add a missing key with Empty, which
/// is why they are not const. Fields (Prüffeld, Messreihe) and points (Prüfpunkt) count from 1.
class Kalibrierung : public QObject
{
    Q_OBJECT

public:
    /// A document in the reset state. \a locale reads and writes its numbers; \a windows opens
    /// windows for the Show members, is borrowed and may be null in programs without windows.
    explicit Kalibrierung(const QLocale &locale, WindowService *windows = nullptr,
                          QObject *parent = nullptr);
    ~Kalibrierung() override;

    /// Clears the store and writes the defaults; raises IsDirtyChanged twice, and leaves it clean.
    void Reset();

    /// The whole store, kinds of values included, as an opaque blob.
    QByteArray ContentString() const;
    /// Replaces the store by a blob's. Raises 7, or 321 for bytes that are none, and changes
    /// nothing then.
    void setContentString(const QByteArray &blob);

    /// Reads the file at \a path into the store; after it every value is text. Raises 7, 53, 57,
    /// 70, 75, 76 or 321, and the document is unchanged then. Raises no IsDirtyChanged beyond
    /// Reset's.
    void LoadFile(const QString &path);
    /// Writes the store to \a path, atomically. Raises 57, 61, 70, 75, 76, 94 or 321 (a value that
    /// the file can't hold, named), and the file on disk is as it was then. Leaves IsDirty alone.
    void SaveFile(const QString &path) const;

    /// Opens the wizard on this document. Raises 5 where no window service was handed in.
    void ShowAssistent(bool modal = false, QObject *parentForm = nullptr);
    void ShowInfo(bool modal = false, QObject *parentForm = nullptr);
    void ShowCalcOptions(bool modal = false, QObject *parentForm = nullptr);
    void ShowProtocollExtraData(bool modal = false, QObject *parentForm = nullptr);

    KeyedStore &DataStore() { return m_store; }
    const KeyedStore &DataStore() const { return m_store; }
    /// The one write path: stores \a value and marks the document dirty when its text differs from
    /// the stored one. Raises 94 for Null. Key and value may come from the store itself.
    void DataStoreLet(QString key, Variant value);

    bool IsDirty() const;
    void setIsDirty(bool dirty);

    Prüfmerkmal &DirektesPrüfmerkmal() { return m_direkt; }
    Prüfmerkmal &IndirektesPrüfmerkmal() { return m_indirekt; }
    Prüfmerkmal &Kovariable() { return m_kovariable; }

    std::int32_t PrüffelderAnzahl();
    /// Raises 380 below 3.
    void setPrüffelderAnzahl(std::int32_t count);
    /// Test points of field \a prüffeld, 4 where none are stored.
    std::int32_t PrüffeldPrüfpunkte(std::int32_t prüffeld) const;
    /// Raises 380 below 3.
    void setPrüffeldPrüfpunkte(std::int32_t prüffeld, std::int32_t count);
    /// Sum of the points of all fields. Raises 6 beyond 32 bits.
    std::int32_t PrüfpunkteTotal();
    /// Covariable value of field \a prüffeld, the field's number where none is stored.
    double PrüffeldWert(std::int32_t prüffeld) const;
    void setPrüffeldWert(std::int32_t prüffeld, double value);

    /// The name a user gave field \a prüffeld, else "Prüffeld " and the number.
    QString PrüffeldName(std::int32_t prüffeld) const;
    /// Stores the name when it differs from the default or one is stored already.
    void setPrüffeldName(std::int32_t prüffeld, const QString &name);
    /// The name a user gave point \a prüfpunkt of every field, else PrüfpunktKey.
    QString PrüfpunktName(std::int32_t prüfpunkt) const;
    void setPrüfpunktName(std::int32_t prüfpunkt, const QString &name);
    /// "Prüfpunkt " and the number.
    QString PrüfpunktKey(std::int32_t prüfpunkt) const;

    /// The stored value whatever its kind, Null where there is none.
    Variant Messwert(PrüfmerkmalEnum merkmal, std::int32_t messreihe, std::int32_t prüfpunkt) const;
    /// Stores \a value as a double; Empty becomes 0. Raises 13 where it is no number.
    void setMesswert(PrüfmerkmalEnum merkmal, std::int32_t messreihe, std::int32_t prüfpunkt,
                     const Variant &value);
    /// Removes the value and marks the document dirty if there was one.
    void removeMesswert(PrüfmerkmalEnum merkmal, std::int32_t messreihe, std::int32_t prüfpunkt);
    /// The value with its characteristic's decimal places, empty where there is none; "(Fehler)" on
    /// any error.
    QString MesswertString(PrüfmerkmalEnum merkmal, std::int32_t messreihe, std::int32_t prüfpunkt);
    QString MesswertKey(PrüfmerkmalEnum merkmal, std::int32_t messreihe,
                        std::int32_t prüfpunkt) const;
    /// "#,##0" and as many decimals as the characteristic has; "#,##0" for any other selector.
    QString MerkmalNumberFormat(MerkmalEnum merkmal);

    // Results, each rounded to its own places where ZwischenergebnisseRunden is set (the standard
    // deviation never is). They raise 94 for a missing measured value, 13 for text that is no
    // number, 11 for a division by zero, 6 for an overflow or more than 1,000,000 points, 5 for a
    // pair that has no covariance.
    /// Points that the results are computed from: the sum of all fields, one with a negative count
    /// having none. Raises 13 or 6 where a count is no number, 6 for more than 1,000,000.
    std::int32_t StatistikPrüfpunkte();
    double StatistikMittelwert(MerkmalEnum merkmal);
    double StatistikVarianz(MerkmalEnum merkmal);
    double StatistikStandardabweichung(MerkmalEnum merkmal);
    double StatistikKovarianz(MerkmalEnum x, MerkmalEnum y);
    double StatistikBestimmtheitsmaß(MerkmalEnum x, MerkmalEnum y);
    /// Slope b of the line X = b * Y + a; 0 for a pair that has no line.
    double StatistikKalibriergeradeAnstieg(MerkmalEnum x, MerkmalEnum y);
    /// Intercept a of the line X = b * Y + a.
    double StatistikKalibriergeradeAchsenabschnitt(MerkmalEnum x, MerkmalEnum y);

    // The same for display. The first four raise what the results raise, the last three give
    // "(Fehler)".
    QString StatistikMittelwertString(MerkmalEnum merkmal);
    QString StatistikVarianzString(MerkmalEnum merkmal);
    QString StatistikStandardabweichungString(MerkmalEnum merkmal);
    QString StatistikKovarianzString(MerkmalEnum x, MerkmalEnum y);
    QString StatistikBestimmtheitsmaßString(MerkmalEnum x, MerkmalEnum y);
    QString StatistikKalibriergeradeAnstiegString(MerkmalEnum x, MerkmalEnum y);
    QString StatistikKalibriergeradeAchsenabschnittString(MerkmalEnum x, MerkmalEnum y);

    /// Whether the coefficient of determination reaches its minimum; false where it can't be
    /// computed.
    bool StatistikBestimmtheitsmaßIndirektDirektOk();

    // Calculation options. The places are the leading number of the stored text, rounded.
    std::int32_t NachkommastellenMittelwerte();
    void setNachkommastellenMittelwerte(std::int32_t places);
    std::int32_t NachkommastellenVarianzen();
    void setNachkommastellenVarianzen(std::int32_t places);
    std::int32_t NachkommastellenStandardabweichung();
    void setNachkommastellenStandardabweichung(std::int32_t places);
    std::int32_t NachkommastellenKovarianzen();
    void setNachkommastellenKovarianzen(std::int32_t places);
    std::int32_t NachkommastellenBestimmtheitsmaße();
    void setNachkommastellenBestimmtheitsmaße(std::int32_t places);
    std::int32_t NachkommastellenAnstieg();
    void setNachkommastellenAnstieg(std::int32_t places);
    std::int32_t NachkommastellenAchsenabschnitt();
    void setNachkommastellenAchsenabschnitt(std::int32_t places);
    bool ZwischenergebnisseRunden();
    void setZwischenergebnisseRunden(bool round);
    /// Raises 13 for Null.
    double MinBestimmtheitsmaßIndirektDirekt();
    void setMinBestimmtheitsmaßIndirektDirekt(double minimum);

    /// The reader and formatter of this document's numbers.
    const Values &values() const { return m_values; }

signals:
    void IsDirtyChanged();
    /// Raised before the wizard window is shown; a handler may put another window in its place.
    void BeforeShowAssistent(QObject *&AssistentForm);

private:
    std::int32_t places(const QString &key);
    QString nameOr(const QString &key, const QString &fallback) const;
    void storeName(const QString &key, const QString &name, const QString &fallback);
    WindowService &windows() const;
    void replaceStore(const std::function<void()> &fill);

    Values m_values;
    WindowService *m_windows; ///< borrowed, may be null
    KeyedStore m_store;
    Prüfmerkmal m_direkt;
    Prüfmerkmal m_indirekt;
    Prüfmerkmal m_kovariable;
    Auswertung m_auswertung;
};

/// The characteristic behind a selector; lives as long as \a document.
Prüfmerkmal &merkmalOf(Kalibrierung &document, MerkmalEnum merkmal);
