#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

// symbole DRAWING.svg SIDE ICON.png: one size of the program's icon, SIDE pixels wide and high.
int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fputs("symbole DRAWING.svg SIDE ICON.png\n", stderr);
        return 2;
    }
    const int side = QByteArray(argv[2]).toInt();
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    QImage icon(side, side, QImage::Format_ARGB32_Premultiplied);
    if (!drawing.isValid() || icon.isNull()) {
        std::fprintf(stderr, "%s can't be drawn %s pixels wide\n", argv[1], argv[2]);
        return 1;
    }
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    drawing.render(&painter);
    painter.end();
    return icon.save(QString::fromLocal8Bit(argv[3]), "PNG") ? 0 : 1;
}
