// Draws an SVG file into a square PNG file.

#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

#include <cstdio>
#include <cstdlib>

namespace {

QImage drawn(QSvgRenderer& drawing, int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter, QRectF(0.0, 0.0, size, size));
    return image;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 4) {
        std::fputs("usage: render_icon DRAWING SIZE PICTURE\n", stderr);
        return EXIT_FAILURE;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    const int size = QByteArray(argv[2]).toInt();
    if (!drawing.isValid() || size <= 0) {
        std::fprintf(stderr, "render_icon: cannot draw %s in size %s\n", argv[1], argv[2]);
        return EXIT_FAILURE;
    }
    if (!drawn(drawing, size).save(QString::fromLocal8Bit(argv[3]), "PNG")) {
        std::fprintf(stderr, "render_icon: cannot write %s\n", argv[3]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
