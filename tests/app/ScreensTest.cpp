#include "ContentView.h"
#include "HistoryView.h"
#include "Layout.h"
#include "ShownApp.h"
#include "UserSettings.h"
#include "VexiloApp.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>
#include <QTranslator>

#include <algorithm>
#include <limits>
#include <ranges>

namespace {

constexpr int usualWidth = 540;

} // namespace

/// Every screen of the application, drawn in many widths, sizes of text, and both directions of
/// reading, on a desktop that asks for no motion. With VEXILO_FEW_SIZES in the environment, in a
/// few of them; with VEXILO_CATALOGUE, in the language of that file of translated texts.
class ScreensTest : public QObject {
    Q_OBJECT

private:
    ShownApp m_shown;

    static void expectNone(const QStringList& faults);

private Q_SLOTS:
    void initTestCase() { m_shown.begin(); }
    void cleanupTestCase() { m_shown.end(); }
    void init();
    void nothingIsCutOrCovered_data();
    void nothingIsCutOrCovered();
    void aListOfAnyLengthIsNotCutOrCovered_data();
    void aListOfAnyLengthIsNotCutOrCovered();
    void everythingIsMirroredForWhoReadsFromRightToLeft();
    void theTextsAreThoseOfTheCatalogue();
    void everyCountOfPeopleStaysInItsRow_data();
    void everyCountOfPeopleStaysInItsRow();
    void aSheetIsInItsPlaceAtOnce();
};

/// A layout that asks for itself may settle anywhere.
void ScreensTest::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("[Ll]oop detected")));
}

void ScreensTest::expectNone(const QStringList& faults)
{
    for (const QString& fault : faults)
        qWarning().noquote() << fault;
    QCOMPARE(faults.size(), 0);
}

void ScreensTest::nothingIsCutOrCovered_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addRow("from left to right") << Qt::LeftToRight;
    if (!qEnvironmentVariableIsSet("VEXILO_FEW_SIZES"))
        QTest::addRow("from right to left") << Qt::RightToLeft;
}

void ScreensTest::nothingIsCutOrCovered()
{
    QFETCH(const Qt::LayoutDirection, direction);
    const bool few = qEnvironmentVariableIsSet("VEXILO_FEW_SIZES");
    const QList<double> scales = few ? QList { 1.0, 2.0 } : QList { 1.0, 1.5, 2.0 };
    const QList<int> widths = few ? QList { 500, 1100 } : QList { 1100, 820, 640, 500, 400, 320 };
    m_shown.start(direction);
    // The share sheet shows the first lines of what it hands over.
    const QStringList ofAnyLength { longDescription(), m_shown.view().shareString().trimmed() };

    QStringList faults;
    for (const double scale : scales) {
        m_shown.scaleText(scale);
        for (const Screen& screen : m_shown.screens()) {
            m_shown.show(screen);
            for (const int width : widths) {
                m_shown.resize(width);
                const QStringList found = faultsOf(m_shown.drawn(), ofAnyLength);
                for (const QString& fault : found)
                    faults.append(QStringLiteral("%1, text %2, width %3: %4")
                                      .arg(screen.name)
                                      .arg(scale)
                                      .arg(width)
                                      .arg(fault));
            }
            m_shown.close();
        }
    }
    m_shown.scaleText(1.0);
    expectNone(faults);
}

void ScreensTest::aListOfAnyLengthIsNotCutOrCovered_data()
{
    QTest::addColumn<int>("bills");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addRow("empty") << 0 << Qt::LeftToRight;
    QTest::addRow("with a scroll bar") << 20 << Qt::LeftToRight;
    QTest::addRow("with a scroll bar, from right to left") << 20 << Qt::RightToLeft;
}

void ScreensTest::aListOfAnyLengthIsNotCutOrCovered()
{
    QFETCH(const int, bills);
    QFETCH(const Qt::LayoutDirection, direction);
    const auto shows = [this](const QString& text) {
        return std::ranges::any_of(
            m_shown.drawn(), [&text](const Drawn& one) { return one.text == text; });
    };
    m_shown.start(direction);
    m_shown.openList();
    QTRY_VERIFY(shows(longDescription()));
    m_shown.app().historyView()->deleteAllBills();
    const auto back = qScopeGuard([this] {
        m_shown.app().historyView()->deleteAllBills();
        m_shown.scaleText(1.0);
        m_shown.close();
        m_shown.addBills();
    });
    const QString none = QCoreApplication::translate("ListPage", "No saved bills yet");
    QTRY_VERIFY(shows(none));
    for (int i = 0; i < bills; i += 2)
        m_shown.addBills();
    QTRY_COMPARE(shows(none), bills == 0);

    QStringList faults;
    for (const bool isEditing : { false, true }) {
        m_shown.app().historyView()->setIsEditing(isEditing);
        for (const double scale : { 1.0, 1.5, 2.0 }) {
            m_shown.scaleText(scale);
            for (const int width : { 1100, 820, 500, 320 }) {
                m_shown.resize(width);
                faults.append(faultsOf(m_shown.drawn(), { longDescription() }));
            }
        }
    }
    expectNone(faults);
}

void ScreensTest::everythingIsMirroredForWhoReadsFromRightToLeft()
{
    const auto look = [this] {
        QMap<QString, std::vector<Drawn>> seen;
        for (const int width : { usualWidth, 1000 }) {
            m_shown.resize(width);
            for (const Screen& screen : m_shown.screens()) {
                m_shown.show(screen);
                seen.insert(screen.name + QString::number(width), m_shown.drawn());
                m_shown.close();
            }
        }
        return seen;
    };
    m_shown.start(Qt::LeftToRight);
    const auto leftToRight = look();
    m_shown.start(Qt::RightToLeft);
    const auto rightToLeft = look();

    QStringList faults;
    for (const QString& name : leftToRight.keys()) {
        QVERIFY(!leftToRight.value(name).empty());
        const double width = name.endsWith(QStringLiteral("1000")) ? 1000.0 : usualWidth;
        for (const QString& fault : unmirrored(leftToRight[name], rightToLeft[name], width))
            faults.append(name + QStringLiteral(": ") + fault);
    }
    expectNone(faults);
}

/// Or a catalogue that fits no text any more would show every screen in English.
void ScreensTest::theTextsAreThoseOfTheCatalogue()
{
    const QString total = QCoreApplication::translate("ResultsPanel", "TOTAL");
    m_shown.start(Qt::LeftToRight);

    const std::vector<Drawn> seen = m_shown.drawn();

    QCOMPARE(total != QLatin1String("TOTAL"), qEnvironmentVariableIsSet("VEXILO_CATALOGUE"));
    QVERIFY(std::ranges::any_of(seen, [&total](const Drawn& one) { return one.text == total; }));
}

void ScreensTest::everyCountOfPeopleStaysInItsRow_data()
{
    QTest::addColumn<qint64>("people");
    QTest::addRow("some") << qint64 { 99 };
    QTest::addRow("a country") << qint64 { 12345678 };
    QTest::addRow("as many as can be") << std::numeric_limits<qint64>::max();
}

void ScreensTest::everyCountOfPeopleStaysInItsRow()
{
    QFETCH(const qint64, people);
    m_shown.start(Qt::LeftToRight);
    const auto back = qScopeGuard([this, before = UserSettings::shared().people()] {
        UserSettings::shared().setPeople(before);
        m_shown.scaleText(1.0);
    });
    UserSettings::shared().setPeople(people);

    QStringList faults;
    for (const double scale : { 1.0, 2.0 }) {
        m_shown.scaleText(scale);
        for (const int width : { 500, 320 }) {
            m_shown.resize(width);
            const std::vector<Drawn> seen = m_shown.drawn();
            const QString count = QString::number(people);
            QVERIFY(std::ranges::any_of(
                seen, [&count](const Drawn& one) { return one.text == count; }));
            faults.append(faultsOf(seen, {}).filter(QStringLiteral("'%1'").arg(count)));
        }
    }
    expectNone(faults);
}

void ScreensTest::aSheetIsInItsPlaceAtOnce()
{
    m_shown.start(Qt::LeftToRight);
    for (const char* const flag : { "showSettings", "showHistory" }) {
        ShownApp::set(m_shown.view(), flag);
        const QQuickItem& sheet = m_shown.top();
        QCOMPARE(m_shown.layers().size(), 1);
        const double place = sheet.y();

        m_shown.rest();

        QCOMPARE(sheet.y(), place);
        m_shown.close();
    }
}

int main(int argc, char* argv[])
{
    // The bus has to be there before the application.
    ScreensTest test;
    const QGuiApplication application(argc, argv);
    QTranslator texts;
    const QString catalogue = qEnvironmentVariable("VEXILO_CATALOGUE");
    if (!catalogue.isEmpty()
        && !(texts.load(catalogue) && QGuiApplication::installTranslator(&texts)))
        return EXIT_FAILURE;
    return QTest::qExec(&test, argc, argv);
}

#include "ScreensTest.moc"
