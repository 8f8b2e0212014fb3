#include "FirstView.h"

#include "Theme.h"

#include <QFontMetricsF>
#include <QGuiApplication>

namespace {

QFont styled(double size, QFont::Weight weight, QFont::Style style = QFont::StyleNormal)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(static_cast<int>(size));
    font.setWeight(weight);
    font.setStyle(style);
    return font;
}

} // namespace

QList<QFont> firstFonts()
{
    return {
        QGuiApplication::font(), // of controls, until they are told theirs
        styled(smallFontSize, QFont::Normal),
        styled(bodyFontSize + 2.0, QFont::Normal),
        styled(fontSize1, QFont::Normal),
        styled(fontSize1, QFont::Normal, QFont::StyleItalic),
        styled(fontSize3, QFont::Normal),
        styled(fontSize3, QFont::Bold),
        styled(fontSize3 + 2.0, QFont::Normal),
        styled(fontSize3 + 2.0, QFont::Bold),
        styled(fontSize3 + 4.0, QFont::Bold),
    };
}

void loadFont(const QFont& font) { (void)QFontMetricsF(font).horizontalAdvance(QLatin1Char('0')); }

QStringList firstIcons()
{
    return {
        QStringLiteral("gearshape"),
        QStringLiteral("arrow.uturn.backward"),
        QStringLiteral("doc.on.doc"),
        QStringLiteral("square.and.arrow.up"),
        QStringLiteral("list.bullet.rectangle.portrait"),
        QStringLiteral("square.and.arrow.down"),
        QStringLiteral("minus"),
        QStringLiteral("plus"),
        QStringLiteral("hand.thumbsdown.fill"),
        QStringLiteral("hand.thumbsup"),
        QStringLiteral("trophy"),
        QStringLiteral("creditcard"),
        QStringLiteral("gift.fill"),
        QStringLiteral("person.fill"),
    };
}
