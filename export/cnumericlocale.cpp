#include "export/cnumericlocale.h"

#include "core/runtimeerror.h"

#include <clocale>

#ifdef Q_OS_UNIX

CNumericLocale::CNumericLocale()
    : m_numeric(newlocale(LC_NUMERIC_MASK, "C", duplocale(LC_GLOBAL_LOCALE)))
    , m_before(uselocale(m_numeric))
{
    if (!m_numeric)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    Q_ASSERT(*std::localeconv()->decimal_point == '.');
}

CNumericLocale::~CNumericLocale()
{
    uselocale(m_before);
    freelocale(m_numeric);
}

#else

CNumericLocale::CNumericLocale()
    : m_perThread(_configthreadlocale(_ENABLE_PER_THREAD_LOCALE))
    , m_before(std::setlocale(LC_NUMERIC, nullptr))
{
    std::setlocale(LC_NUMERIC, "C");
}

CNumericLocale::~CNumericLocale()
{
    std::setlocale(LC_NUMERIC, m_before.c_str());
    _configthreadlocale(m_perThread);
}

#endif
