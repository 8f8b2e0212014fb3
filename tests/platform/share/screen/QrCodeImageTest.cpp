#include "QrCodeImage.h"

#include "QrCode.h"

#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>

#include <set>

namespace {

const QString summary = QStringLiteral(
    "Based on 4 people dining.\nThe bill came to 133,50 €\nService was Good, tip given 26,70 €\n\n"
    "Grand total to pay 160,20 €\nEveryone pays 41,00 €\n(Everyone is paying a tip)\n\n"
    "The share has been rounded up.\n\nThe tip is calculated as 5% of 133,50 €");

} // namespace

/// The code as it stands on the screen, read by another program.
class QrCodeImageTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QQuickWindow m_window;
    QrCodeImage* m_image = nullptr;

    QImage show(const QString& text, int width)
    {
        m_window.resize(width, width + 40); // a code is square, whatever room it has
        m_image->setSize(QSizeF(width, width + 40));
        m_image->setProperty("text", text);
        m_window.show();
        if (!QTest::qWaitForWindowExposed(&m_window))
            return {};
        return m_window.grabWindow();
    }

    /// What zbarimg reads in a picture.
    QString decoded(const QImage& picture)
    {
        const QString file = m_folder.filePath(QStringLiteral("code.png"));
        QProcess reader;
        if (!picture.save(file))
            return QStringLiteral("no picture");
        reader.start(QStringLiteral("zbarimg"),
            { QStringLiteral("--quiet"), QStringLiteral("--raw"), QStringLiteral("--oneshot"),
                QStringLiteral("-Sbinary"), file });
        if (!reader.waitForFinished())
            return QStringLiteral("no reader: ") + reader.errorString();
        return QString::fromUtf8(reader.readAllStandardOutput());
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_image = new QrCodeImage(m_window.contentItem());
        const double scale
            = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble();
        const QImage picture = show(summary, 460);
        QCOMPARE(m_window.devicePixelRatio(), scale);
        QCOMPARE(picture.width(), qRound(460 * scale));
    }

    void anotherProgramReadsTheText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("a summary") << summary;
        QTest::newRow("ASCII") << QStringLiteral("Everyone pays $30.00\n");
        QTest::newRow("accents") << QStringLiteral("Déjeuner à Besançon: 12,50 €");
        QTest::newRow("Arabic") << QStringLiteral("العشاء: يدفع كل واحد ٣٠٫٠٠");
        QTest::newRow("Japanese") << QStringLiteral("一人あたり ¥3,000 です。");
        QTest::newRow("beyond the first plane") << QStringLiteral("Pizza 🍕 for 4");
        QTest::newRow("long") << QString(1000, QLatin1Char('x'));
    }

    void anotherProgramReadsTheText()
    {
        QFETCH(const QString, text);

        QCOMPARE(decoded(show(text, 460)), text);
    }

    void everyModuleHasTheSameWholeNumberOfPixels()
    {
        const QImage picture = show(summary, 457);
        const double ratio = m_window.devicePixelRatio();
        const int modules = QrCode::encode(summary)->side();
        const int most = static_cast<int>(457 * ratio) / (modules + 2 * QrCode::quietZone);

        // Runs of one colour along every row and column are multiples of the module.
        int left = picture.width();
        std::set<QRgb> colours;
        for (int y = 0; y < picture.height(); ++y) {
            int run = 0;
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb colour = picture.pixel(x, y);
                colours.insert(colour);
                if (qGray(colour) == 0) {
                    left = std::min(left, x);
                    ++run;
                } else {
                    QCOMPARE(run % most, 0);
                    run = 0;
                }
            }
        }

        QCOMPARE(colours, (std::set<QRgb> { qRgb(0, 0, 0), qRgb(255, 255, 255) }));
        QVERIFY2(left >= QrCode::quietZone * most, qPrintable(QString::number(left)));
    }

    void anotherTextIsDrawnAnew()
    {
        QCOMPARE(decoded(show(QStringLiteral("one"), 200)), QStringLiteral("one"));
        QCOMPARE(decoded(show(QStringLiteral("two"), 200)), QStringLiteral("two"));
    }

    void aTextWithoutACodeDrawsABlankGround()
    {
        const QImage picture = show(QString(5000, QLatin1Char('x')), 200);

        QImage blank(picture.size(), picture.format());
        blank.fill(Qt::white);
        blank.setDevicePixelRatio(picture.devicePixelRatio());
        QCOMPARE(picture, blank);
    }
};

QTEST_MAIN(QrCodeImageTest)
#include "QrCodeImageTest.moc"
