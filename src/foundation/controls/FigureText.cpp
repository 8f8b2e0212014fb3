#include "FigureText.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

bool isFigure(QChar c) { return c.digitValue() >= 0; }

/// The room of the widest digit of the script that c belongs to.
qreal figureWidth(const QFontMetricsF& metrics, QChar c)
{
    const auto zero = static_cast<char16_t>(c.unicode() - c.digitValue());
    qreal widest = 0.0;
    for (char16_t digit = 0; digit < 10; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(zero + digit)));
    return widest;
}

/// What each digit lacks to the width of the widest, half of it on either side.
QList<qreal> halfGaps(const QString& text, const QFontMetricsF& metrics)
{
    QList<qreal> gaps(text.size(), 0.0);
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isFigure(text.at(i)))
            gaps[i]
                = (figureWidth(metrics, text.at(i)) - metrics.horizontalAdvance(text.at(i))) / 2;
    }
    return gaps;
}

QTextLayout::FormatRange spacingAfter(qsizetype index, qreal spacing)
{
    QTextCharFormat format;
    format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
    format.setFontLetterSpacing(spacing);
    return { static_cast<int>(index), 1, format };
}

} // namespace

FigureText::FigureText(QQuickItem* parent)
    : QQuickPaintedItem(parent)
{
    connect(this, &FigureText::textChanged, this, &FigureText::layOut);
    connect(this, &FigureText::fontChanged, this, &FigureText::layOut);
    connect(this, &FigureText::colorChanged, this, [this] { update(); });
    connect(this, &FigureText::mirroredChanged, this, [this] { update(); });
}

void FigureText::componentComplete()
{
    QQuickPaintedItem::componentComplete();
    layOut();
}

void FigureText::layOut()
{
    // Until all its properties are set, a text would be laid out in fonts that nothing shows.
    if (!isComponentComplete())
        return;
    QFont font = m_font;
    font.setKerning(false);
    const QFontMetricsF metrics(font);
    const QList<qreal> gaps = halfGaps(m_text, metrics);
    QList<QTextLayout::FormatRange> formats;
    for (qsizetype i = 0; i < m_text.size(); ++i) {
        const qreal spacing = gaps.at(i) + (i + 1 < m_text.size() ? gaps.at(i + 1) : 0.0);
        if (spacing > 0.0)
            formats.append(spacingAfter(i, spacing));
    }
    m_start = gaps.isEmpty() ? 0.0 : gaps.first();

    m_layout.setText(m_text);
    m_layout.setFont(font);
    m_layout.setFormats(formats);
    m_layout.beginLayout();
    QTextLine line = m_layout.createLine();
    if (line.isValid())
        line.setLineWidth(1e6);
    m_layout.endLayout();
    setImplicitSize(std::ceil(m_start + (line.isValid() ? line.naturalTextWidth() : 0.0)),
        std::ceil(metrics.height()));
    update();
}

void FigureText::paint(QPainter* painter)
{
    if (m_layout.lineCount() == 0 || implicitWidth() <= 0.0)
        return;
    const QTextLine line = m_layout.lineAt(0);
    const qreal scale = std::min(1.0, width() / implicitWidth());
    const qreal x = m_mirrored ? 0.0 : width() - implicitWidth() * scale;
    painter->setRenderHint(QPainter::TextAntialiasing);
    painter->setPen(m_color);
    painter->translate(x, (height() - line.height() * scale) / 2);
    painter->scale(scale, scale);
    // A right-to-left line stands at the far end of its width: bring its ink to the start.
    m_layout.draw(painter, QPointF(m_start - line.naturalTextRect().x(), 0.0));
}
