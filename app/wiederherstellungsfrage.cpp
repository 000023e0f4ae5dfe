#include "app/wiederherstellungsfrage.h"

#include "core/produkt.h"
#include "protocol/windows/haltoffen.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>

namespace {

QString description(const Wiederherstellung::Fund &found, const QLocale &locale)
{
    const QFileInfo file(found.fileName);
    const QString name = found.fileName.isEmpty()
                             ? u"noch ohne Namen"_qs
                             : u"%1\nOrdner: %2"_qs.arg(
                                   file.fileName(), QDir::toNativeSeparators(file.absolutePath()));
    const QDateTime time = found.time.toLocalTime();
    return u"Datei: %1\nStand: %2, %3"_qs.arg(name,
                                              locale.toString(time.date(), QLocale::LongFormat),
                                              locale.toString(time.time(), QLocale::ShortFormat));
}

} // namespace

Wiederherstellung::Antwort frageNachWiederherstellung(QWidget *owner,
                                                      const Wiederherstellung::Fund &found,
                                                      const QLocale &locale)
{
    const HaltOffen open(owner);
    QMessageBox box(owner);
    box.setWindowTitle(produkt::name());
    box.setIcon(QMessageBox::Question);
    box.setTextFormat(Qt::PlainText); // file names may look like markup
    box.setText(u"Das Programm wurde unerwartet beendet. Ihre noch nicht gespeicherte Arbeit ist "
                u"erhalten geblieben:\n\n%1\n\nMöchten Sie damit weiterarbeiten?"_qs.arg(
                    description(found, locale)));
    QPushButton *restore = box.addButton(u"&Wiederherstellen"_qs, QMessageBox::AcceptRole);
    const QPushButton *discard = box.addButton(u"&Verwerfen"_qs, QMessageBox::DestructiveRole);
    QPushButton *later = box.addButton(u"&Später"_qs, QMessageBox::RejectRole);
    box.setDefaultButton(restore);
    box.setEscapeButton(later);
    box.exec();
    if (box.clickedButton() == restore)
        return Wiederherstellung::Antwort::Wiederherstellen;
    return box.clickedButton() == discard ? Wiederherstellung::Antwort::Verwerfen
                                          : Wiederherstellung::Antwort::Später;
}
