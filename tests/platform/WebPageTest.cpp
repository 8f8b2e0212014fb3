#include "WebPage.h"
#include "DeathTest.h"

#include <QDesktopServices>
#include <QTest>
#include <QUrl>

class WebPageTest : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void open(const QUrl& page) { m_opened.append(page.toString()); }

private:
    QStringList m_opened;

private Q_SLOTS:
    void initTestCase() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "open"); }
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }

    void anAddressIsHandedToTheBrowser()
    {
        openWebPage(QStringLiteral("https://example.org/help?topic=tip"));

        QCOMPARE(m_opened, QStringList { QStringLiteral("https://example.org/help?topic=tip") });
    }

    void whatIsNoAddressStopsTheProcess_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("empty") << QString();
        QTest::newRow("relative") << QStringLiteral("help.html");
        QTest::newRow("with a blank") << QStringLiteral("https://exam ple.org/");
    }

    void whatIsNoAddressStopsTheProcess()
    {
        QFETCH(const QString, address);

        const Death death = deathOf([address] { openWebPage(address); });

        QVERIFY(death.aborted);
        QCOMPARE(death.message,
            QByteArray("Unexpectedly found nil while unwrapping an Optional value\n"));
    }
};

QTEST_MAIN(WebPageTest)
#include "WebPageTest.moc"
