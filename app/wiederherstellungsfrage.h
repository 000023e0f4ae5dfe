#pragma once

#include "app/wiederherstellung.h"

class QLocale;

/// Asks in a box what is to become of unsaved work that was found. Closing the box means later.
Wiederherstellung::Antwort frageNachWiederherstellung(QWidget *owner,
                                                      const Wiederherstellung::Fund &found,
                                                      const QLocale &locale);
