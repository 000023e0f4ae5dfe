#include "wizard/bilder.h"

#include <QPainter>
#include <QSvgRenderer>

// The linker drops the resources of a static library that nobody names. Outside of namespaces
// because the macro declares a function of the global one.
static void useResources()
{
    Q_INIT_RESOURCE(dialoge);
}

namespace {

QString path(const QString &name)
{
    useResources();
    return u":/wizard/"_qs + name + u".svg"_qs;
}

} // namespace

QString bilder::info()
{
    return path(QStringLiteral("info"));
}

QString bilder::examination()
{
    return path(QStringLiteral("examination"));
}

QString bilder::programm()
{
    return path(QStringLiteral("programm"));
}

QPixmap bilder::pixmap(const QString &path, int side, qreal devicePixelRatio)
{
    const int pixels = qMax(1, qCeil(side * devicePixelRatio));
    QPixmap result(pixels, pixels);
    result.fill(Qt::transparent);
    QSvgRenderer drawing(path);
    QPainter painter(&result);
    drawing.render(&painter);
    painter.end();
    result.setDevicePixelRatio(devicePixelRatio);
    return result;
}

QIcon bilder::programmsymbol()
{
    // Drawn here and not loaded as SVG by QIcon, which needs a plug-in that may not be installed.
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(pixmap(programm(), side, 1.0));
    return icon;
}
