#include "UserDefaults.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <cfloat>
#include <limits>

class UserDefaultsTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_file;
    int m_files = 0;
    const QString m_key = QStringLiteral("key");

private Q_SLOTS:
    void init()
    {
        // A name of its own for each test: QSettings remembers files by name, size and time.
        m_file = m_folder.filePath(QStringLiteral("preferences%1.ini").arg(++m_files));
    }

    void aMissingKeyReadsAsTheZeroOfItsType()
    {
        const UserDefaults defaults(m_file);

        QCOMPARE(defaults.boolForKey(m_key), false);
        QCOMPARE(defaults.integerForKey(m_key), 0);
        QCOMPARE(defaults.doubleForKey(m_key), 0.0);
        QVERIFY(!defaults.contains(m_key));
    }

    void aValueOfAnotherTypeReadsAsZero()
    {
        UserDefaults defaults(m_file);
        defaults.setValue(m_key, QStringLiteral("words"));

        QCOMPARE(defaults.boolForKey(m_key), false);
        QCOMPARE(defaults.integerForKey(m_key), 0);
        QCOMPARE(defaults.doubleForKey(m_key), 0.0);
    }

    void aWrittenValueIsReadBackAtOnce()
    {
        UserDefaults defaults(m_file);
        defaults.setValue(m_key, 12.5);

        QCOMPARE(defaults.doubleForKey(m_key), 12.5);
        QVERIFY(defaults.contains(m_key));
    }

    void integersSurviveTheFile_data()
    {
        QTest::addColumn<qint64>("value");
        QTest::newRow("zero") << qint64(0);
        QTest::newRow("least") << std::numeric_limits<qint64>::min();
        QTest::newRow("greatest") << std::numeric_limits<qint64>::max();
    }

    void integersSurviveTheFile()
    {
        QFETCH(const qint64, value);
        {
            UserDefaults defaults(m_file);
            defaults.setValue(m_key, value);
        }

        QCOMPARE(UserDefaults(m_file).integerForKey(m_key), value);
    }

    void doublesSurviveTheFileBitForBit_data()
    {
        QTest::addColumn<double>("value");
        QTest::newRow("a tenth") << 0.1;
        QTest::newRow("many digits") << 10.019000000000002;
        QTest::newRow("greatest") << DBL_MAX;
        QTest::newRow("least normal") << DBL_MIN;
        QTest::newRow("negative") << -33.33;
    }

    void doublesSurviveTheFileBitForBit()
    {
        QFETCH(const double, value);
        {
            UserDefaults defaults(m_file);
            defaults.setValue(m_key, value);
        }

        const double read = UserDefaults(m_file).doubleForKey(m_key);
        QVERIFY2(read == value, qPrintable(QString::number(read, 'g', 17)));
    }

    void booleansSurviveTheFile()
    {
        {
            UserDefaults defaults(m_file);
            defaults.setValue(m_key, true);
            defaults.setValue(QStringLiteral("off"), false);
        }

        const UserDefaults defaults(m_file);
        QVERIFY(defaults.boolForKey(m_key));
        QVERIFY(!defaults.boolForKey(QStringLiteral("off")));
        QVERIFY(defaults.contains(QStringLiteral("off")));
    }

    void aBooleanMayBeWrittenByHandAsANumberOrAWord_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("value");
        QTest::newRow("1") << QByteArray("1") << true;
        QTest::newRow("0") << QByteArray("0") << false;
        QTest::newRow("true") << QByteArray("true") << true;
        QTest::newRow("YES") << QByteArray("YES") << true;
        QTest::newRow("no") << QByteArray("no") << false;
    }

    void aBooleanMayBeWrittenByHandAsANumberOrAWord()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const bool, value);
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[General]\nkey=" + text + '\n');
        file.close();

        QCOMPARE(UserDefaults(m_file).boolForKey(m_key), value);
    }

    void aChangeIsCarriedToTheFileWithoutBeingAskedFor()
    {
        UserDefaults defaults(m_file);
        defaults.setValue(m_key, 7);

        QTRY_COMPARE(QSettings(m_file, QSettings::IniFormat).value(m_key).toInt(), 7);
    }

    void synchronizeReturnsWithEverythingInTheFile()
    {
        UserDefaults defaults(m_file);
        for (int round = 1; round <= 5; ++round) {
            defaults.setValue(m_key, round);
            defaults.synchronize();

            QCOMPARE(QSettings(m_file, QSettings::IniFormat).value(m_key).toInt(), round);
        }
    }

    void aRemovedValueIsGoneFromTheFileToo()
    {
        UserDefaults defaults(m_file);
        defaults.setValue(m_key, 7);
        defaults.synchronize();
        defaults.removeValue(m_key);
        defaults.synchronize();

        QVERIFY(!defaults.contains(m_key));
        QVERIFY(!QSettings(m_file, QSettings::IniFormat).contains(m_key));
    }

    void keysOfOthersInTheFileAreKept()
    {
        QSettings(m_file, QSettings::IniFormat).setValue(QStringLiteral("foreign"), 3);
        {
            UserDefaults defaults(m_file);
            defaults.setValue(m_key, 7);
        }

        QCOMPARE(
            QSettings(m_file, QSettings::IniFormat).value(QStringLiteral("foreign")).toInt(), 3);
    }

    void aDamagedFileIsKeptAndWhatCouldBeReadIsWrittenAnew()
    {
        const QByteArray damaged = "[General]\nkey=7\nno equals sign here\nother=8\n";
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(damaged);
        file.close();
        {
            UserDefaults defaults(m_file);
            QCOMPARE(defaults.integerForKey(m_key), 7);
            // Another start at this very moment is no first launch.
            QCOMPARE(UserDefaults(m_file).integerForKey(m_key), 7);
            defaults.setValue(QStringLiteral("third"), 9);
        }

        QFile kept(m_file + QLatin1String(".damaged"));
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), damaged);
        const UserDefaults later(m_file);
        QCOMPARE(later.integerForKey(m_key), 7);
        QCOMPARE(later.integerForKey(QStringLiteral("other")), 8);
        QCOMPARE(later.integerForKey(QStringLiteral("third")), 9);
    }

    void changesMadeWhileTheFileIsWrittenAreNotLost()
    {
        qint64 last = 0;
        {
            UserDefaults defaults(m_file);
            for (int round = 0; round < 50; ++round) {
                for (int change = 0; change < 200; ++change)
                    defaults.setValue(m_key, ++last);
                if (round % 5 == 0)
                    defaults.synchronize();
            }
        }

        QCOMPARE(UserDefaults(m_file).integerForKey(m_key), last);
    }

    void whatCouldNotBeWrittenIsWrittenWithTheNextChange()
    {
        const QString file = m_folder.filePath(QStringLiteral("missing/preferences.ini"));
        QFile obstacle(m_folder.filePath(QStringLiteral("missing")));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        obstacle.close();
        UserDefaults defaults(file);
        defaults.setValue(m_key, 7);
        defaults.synchronize();
        QCOMPARE(defaults.integerForKey(m_key), 7);

        QVERIFY(obstacle.remove());
        defaults.setValue(QStringLiteral("other"), 8);
        defaults.synchronize();

        const UserDefaults later(file);
        QCOMPARE(later.integerForKey(m_key), 7);
        QCOMPARE(later.integerForKey(QStringLiteral("other")), 8);
    }

    void theUsersOwnFileStandsInTheMakersFolder()
    {
        QVERIFY(UserDefaults::standardFile().endsWith(QLatin1String("/Morrowick/Vexilo.ini")));
    }
};

QTEST_GUILESS_MAIN(UserDefaultsTest)
#include "UserDefaultsTest.moc"
