#include "DiskSpace.h"

#include "Diagnostics.h"
#include "FileTree.h"

#include <QTest>

class DiskSpaceTest : public QObject {
    Q_OBJECT

private:
    FileTree m_tree;

    static QByteArray spaceOf(const QUrl& url)
    {
        return QByteArray::number(freeDiskSpace(url)) + " of "
            + QByteArray::number(totalDiskSpace(url));
    }

private Q_SLOTS:
    void aVolumeHasRoomAndNoMoreThanItsSize()
    {
        QVERIFY(m_tree.addFile("menu.txt"));
        const QUrl url = m_tree.url("menu.txt");

        QVERIFY(totalDiskSpace(url) > 0);
        QVERIFY(freeDiskSpace(url) >= 0 && freeDiskSpace(url) <= totalDiskSpace(url));
    }

    void itIsTheVolumeThatHoldsTheItem()
    {
        QVERIFY(m_tree.addFolder("volume"));

        const auto lines = linesOfChild([this] {
            if (!mountVolume(m_tree.path("volume"))) {
                printDiagnostic("skip");
                return;
            }
            printDiagnostic(spaceOf(m_tree.url("volume")).toStdString());
            if (m_tree.addFile("volume/menu.txt", QByteArray(500'000, 'x')))
                printDiagnostic(spaceOf(m_tree.url("volume/menu.txt")).toStdString());
        });

        if (lines == QByteArrayList { "skip" })
            QSKIP("This machine lets its users mount nothing.");
        // A file takes whole pages of 4096 bytes.
        QCOMPARE(lines, (QByteArrayList { "1048576 of 1048576", "544768 of 1048576" }));
    }

    void whatHasNoVolumeHasNoSpace_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::newRow("a missing file") << m_tree.url("missing");
        QTest::newRow("a volume without a size") << fileUrl("/proc/self");
        QTest::newRow("a web page") << QUrl(QStringLiteral("https://example.org/"));
        QTest::newRow("nothing") << QUrl();
        QTest::newRow("a path that is too long") << m_tree.url(QByteArray(5000, 'x'));
    }

    void whatHasNoVolumeHasNoSpace()
    {
        QFETCH(const QUrl, url);

        QCOMPARE(spaceOf(url), QByteArray("0 of 0"));
    }

    void aLinkStandsForTheVolumeThatItLeadsTo()
    {
        QVERIFY(m_tree.addLink("link", "/proc/self") && m_tree.addLink("dangling", "nowhere"));

        QCOMPARE(spaceOf(m_tree.url("link")), QByteArray("0 of 0"));
        QCOMPARE(spaceOf(m_tree.url("dangling")), QByteArray("0 of 0"));
    }
};

QTEST_GUILESS_MAIN(DiskSpaceTest)
#include "DiskSpaceTest.moc"
