#pragma once

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <clocale>
#include <locale.h>
#else
#include <string>
#endif

/// While it lives, C functions of this thread write numbers with a point.
///
/// The spreadsheet library prints numbers with fprintf; under a German C locale it would write
/// "97,51" into the file, which no program reads as a number then. Other threads keep their locale.
class CNumericLocale
{
public:
    CNumericLocale();
    ~CNumericLocale();
    Q_DISABLE_COPY_MOVE(CNumericLocale)

private:
#ifdef Q_OS_UNIX
    locale_t m_numeric;
    locale_t m_before;
#else
    int m_perThread;
    std::string m_before;
#endif
};
