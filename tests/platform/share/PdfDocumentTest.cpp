#include "PdfDocument.h"

#include <QLocale>
#include <QPageSize>
#include <QTest>

/// The paper. What is on it is tested where it is saved and printed.
class PdfDocumentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thePaperIsTheOneThatIsUsualThere_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QPageSize::PageSizeId>("paper");
        QTest::newRow("inches and Letter") << QStringLiteral("en_US") << QPageSize::Letter;
        QTest::newRow("inches and A4") << QStringLiteral("en_GB") << QPageSize::A4;
        QTest::newRow("metric and Letter") << QStringLiteral("en_CA") << QPageSize::Letter;
        QTest::newRow("metric and Letter, Mexico") << QStringLiteral("es_MX") << QPageSize::Letter;
        QTest::newRow("metric and A4") << QStringLiteral("de_DE") << QPageSize::A4;
        QTest::newRow("metric and A4, Brazil") << QStringLiteral("pt_BR") << QPageSize::A4;
        QTest::newRow("nowhere") << QStringLiteral("C") << QPageSize::A4;
    }

    void thePaperIsTheOneThatIsUsualThere()
    {
        QFETCH(const QString, locale);
        QFETCH(const QPageSize::PageSizeId, paper);

        const QPageLayout page = usualPage(QLocale(locale));

        QCOMPARE(page.pageSize().id(), paper);
        QCOMPARE(page.orientation(), QPageLayout::Portrait);
        QVERIFY(page.margins().left() > 0.0);
    }
};

QTEST_APPLESS_MAIN(PdfDocumentTest)
#include "PdfDocumentTest.moc"
