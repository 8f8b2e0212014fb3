#include "PdfDocument.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>

#include <unicode/ulocdata.h>

namespace {

constexpr double textSize = 12.0; // points
constexpr double margin = 20.0; // mm

void drawPage(QPainter& painter, QTextDocument& document, int number)
{
    const QSizeF size = document.pageSize();
    QAbstractTextDocumentLayout::PaintContext context;
    // A line that only touches this page stands on another one.
    context.clip = QRectF(QPointF(0.0, number * size.height()), size).adjusted(0.0, 1.0, 0.0, -1.0);
    // The desktop's palette may be made for a dark screen.
    context.palette.setColor(QPalette::Text, Qt::black);
    painter.save();
    painter.translate(0.0, -number * size.height());
    painter.setClipRect(context.clip);
    document.documentLayout()->draw(&painter, context);
    painter.restore();
}

/// The writer ends the document when it goes.
void writePdf(QBuffer& buffer, const QString& text, const QPageLayout& page)
{
    QPdfWriter writer(&buffer);
    writer.setPageLayout(page);
    writer.setTitle(QGuiApplication::applicationDisplayName());
    writer.setCreator(QGuiApplication::applicationDisplayName());

    QTextDocument document;
    document.documentLayout()->setPaintDevice(&writer);
    document.setDocumentMargin(0.0);
    QFont font = QGuiApplication::font();
    font.setPointSizeF(textSize);
    document.setDefaultFont(font);
    document.setPlainText(text);
    document.setPageSize(page.paintRectPixels(writer.resolution()).size());

    QPainter painter(&writer);
    for (int number = 0; number < document.pageCount(); ++number) {
        if (number > 0)
            writer.newPage();
        drawPage(painter, document, number);
    }
}

/// In millimetres; none where nothing is known of the territory.
QSize usualPaper(const QLocale& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    int height = 0;
    int width = 0;
    ulocdata_getPaperSize(locale.name().toLatin1().constData(), &height, &width, &status);
    return U_SUCCESS(status) ? QSize(width, height) : QSize();
}

} // namespace

QPageLayout usualPage(const QLocale& locale)
{
    return { QPageSize(usualPaper(locale) == QSize(216, 279) ? QPageSize::Letter : QPageSize::A4),
        QPageLayout::Portrait, QMarginsF(margin, margin, margin, margin), QPageLayout::Millimeter };
}

QByteArray pdfOf(const QString& text, const QPageLayout& page)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    writePdf(buffer, text, page);
    return buffer.data();
}
