#include "Language.h"
#include "Bundle.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class LanguageTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    Bundle m_bundle { m_folder.path() };

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("translations")));
        for (const char* const language : { "de", "pt", "pt_BR" }) {
            QFile file(m_folder.filePath(QLatin1String("translations/vexilo_")
                + QLatin1String(language) + QLatin1String(".qm")));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
    }

    void theTextsAreInTheFirstLanguageThatThereIs_data()
    {
        QTest::addColumn<QStringList>("languages");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const char* languages, const char* expected) {
            QTest::newRow(name) << QString::fromLatin1(languages).split(QLatin1Char(' '))
                                << QString::fromLatin1(expected);
        };
        row("a language", "de", "de");
        row("of a country", "de-AT", "de");
        row("of a country, in a script", "de-Latn-AT", "de");
        row("of the country that has its own", "pt-BR", "pt_BR");
        row("of another country", "pt-PT", "pt");
        row("English", "en-US en-Latn-US en", "");
        row("no language", "C", "");
        row("one that nobody has translated", "nl-NL nl-Latn-NL nl", "");
        row("the second choice", "nl-NL nl-Latn-NL nl de", "de");
        row("English before German", "en-GB en de", "");
        row("an unknown one before German", "xx de", "de");
        row("a language whose code begins alike", "den", "");
    }

    void theTextsAreInTheFirstLanguageThatThereIs()
    {
        QFETCH(const QStringList, languages);
        QFETCH(const QString, expected);

        const std::optional<QString> catalogue = catalogueFor(languages, m_bundle);

        const QString file = m_folder.filePath(
            QLatin1String("translations/vexilo_") + expected + QLatin1String(".qm"));
        QCOMPARE(catalogue, expected.isEmpty() ? std::nullopt : std::optional(file));
    }

    void withoutAnyLanguageTheTextsAreEnglish()
    {
        QCOMPARE(catalogueFor({}, m_bundle), std::nullopt);
    }
};

QTEST_APPLESS_MAIN(LanguageTest)
#include "LanguageTest.moc"
