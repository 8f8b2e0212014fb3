#include "Activity.h"
#include "Appearance.h"
#include "FakeDesktop.h"
#include "Item.h"
#include "Layout.h"
#include "PrivateBus.h"
#include "UserSettings.h"
#include "VexiloApp.h"
#include "WindowLoader.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest/quicktest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <ranges>

Q_IMPORT_QML_PLUGIN(Vexilo_AppPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_CalculatorPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_HistoryPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_SettingsPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_SharePlugin)

namespace {

const QString desktopSpace = QStringLiteral("org.gnome.desktop.interface");
const QString textScaleKey = QStringLiteral("text-scaling-factor");
const QString longDescription
    = QStringLiteral("A dinner whose description is longer than any row of the list");

constexpr int usualWidth = 540;
constexpr int usualHeight = 880;

struct Screen {
    QString name;
    int layers = 0; ///< how many sheets, dialogs and menus lie over the calculator
    std::function<void()> open;
};

} // namespace

/// Every screen of the application, drawn in many widths, sizes of text, and both directions of
/// reading, on a desktop that asks for no motion. With VEXILO_FEW_SIZES in the environment, in a
/// few of them; with VEXILO_CATALOGUE, in the language of that file of translated texts.
class ScreensTest : public QObject {
    Q_OBJECT

public:
    ScreensTest();

private:
    PrivateBus m_bus;
    QTemporaryDir m_home;
    std::unique_ptr<FakePortal> m_portal;
    std::unique_ptr<WindowLoader> m_windowLoader;
    std::unique_ptr<VexiloApp> m_app;
    QQuickWindow* m_window = nullptr;
    ContentView* m_view = nullptr;

    void start(Qt::LayoutDirection direction);
    void addBills();
    [[nodiscard]] QList<Screen> screens();
    void show(const Screen& screen);
    void close();
    void rest() const;
    void resize(int width) const;
    void scaleText(double scale);
    [[nodiscard]] QList<const QQuickItem*> layers() const;
    [[nodiscard]] const QQuickItem& top() const;
    [[nodiscard]] std::vector<Drawn> drawn() const { return drawnIn(top()); }

    static void expectNone(const QStringList& faults);
    void openList();
    void openPage();
    void openCode();
    static void set(QObject& view, const char* flag);
    [[nodiscard]] const QObject* announcer() const;

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void nothingIsCutOrCovered_data();
    void nothingIsCutOrCovered();
    void everythingIsMirroredForWhoReadsFromRightToLeft();
    void theTextsAreThoseOfTheCatalogue();
    void everyCountOfPeopleStaysInItsRow_data();
    void everyCountOfPeopleStaysInItsRow();
    void aSheetIsInItsPlaceAtOnce();
    void resultsAreAnnouncedWhereNothingCoversThem();
    void zerosInThePlaceOfResultsAreNotAnnounced();
    void whatIsWrongIsFound_data();
    void whatIsWrongIsFound();
    void whatIsNotMirroredIsFound();
};

ScreensTest::ScreensTest()
{
    qputenv("XDG_CONFIG_HOME", m_home.path().toLocal8Bit());
    qputenv("XDG_DATA_HOME", m_home.path().toLocal8Bit());
    qputenv("XDG_STATE_HOME", m_home.path().toLocal8Bit());
    qputenv("HOME", m_home.path().toLocal8Bit());
}

void ScreensTest::initTestCase()
{
    QVERIFY(!m_bus.address().isEmpty());
    m_portal = std::make_unique<FakePortal>(m_bus.address(),
        DesktopSettings { { desktopSpace,
            { { QStringLiteral("enable-animations"), false }, { textScaleKey, 1.0 } } } });
    UserSettings& settings = UserSettings::shared();
    settings.setBill(133.5);
    settings.setPeople(4);
    settings.setService(2);
    settings.setTipFromEveryone(true);
    settings.setRoundTip(true);
    settings.setRoundShare(true);
    start(Qt::LeftToRight);
    addBills();
}

void ScreensTest::cleanupTestCase()
{
    m_app.reset();
    m_windowLoader.reset();
    m_portal.reset();
}

/// A layout that asks for itself may settle anywhere.
void ScreensTest::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("[Ll]oop detected")));
}

/// Starts the application, anew where it runs: the direction is that of its whole life.
void ScreensTest::start(Qt::LayoutDirection direction)
{
    m_app.reset();
    QGuiApplication::setLayoutDirection(direction);
    m_windowLoader = std::make_unique<WindowLoader>();
    m_app = std::make_unique<VexiloApp>(*m_windowLoader);
    QVERIFY(m_app->start());
    m_window = qobject_cast<QQuickWindow*>(QGuiApplication::topLevelWindows().first());
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    QTRY_VERIFY(Appearance::connected().first()->reducedMotion());
    // Narrower than a desktop makes it, too.
    m_window->setMinimumSize({});
    m_view = m_window->property("contentView").value<ContentView*>();
    QVERIFY(m_view);
}

void ScreensTest::addBills()
{
    for (const QString& description : { QStringLiteral("Lunch"), longDescription }) {
        m_view->setBillDescription(description);
        m_view->saveThis();
    }
}

/// Waits until everything stands where it stays.
void ScreensTest::rest() const
{
    // A layout may ask for another one.
    for (int turn = 0; turn < 3; ++turn) {
        QCoreApplication::processEvents();
        QVERIFY(QQuickTest::qWaitForPolish(m_window));
    }
}

void ScreensTest::resize(int width) const
{
    m_window->resize(width, usualHeight);
    QTRY_COMPARE(m_window->contentItem()->width(), width);
    rest();
}

void ScreensTest::scaleText(double scale)
{
    m_portal->announce(desktopSpace, textScaleKey, scale);
    QTRY_COMPARE(Appearance::connected().first()->textScale(), scale);
    rest();
}

/// The dialogs, sheets and menus over the calculator, in the order in which they were opened.
QList<const QQuickItem*> ScreensTest::layers() const
{
    QList<const QQuickItem*> layers;
    for (const QQuickItem* const layer : m_window->contentItem()->childItems()) {
        if (!layer->inherits("QQuickOverlay"))
            continue;
        for (const QQuickItem* const popup : layer->childItems()) {
            if (popup->inherits("QQuickPopupItem") && popup->isVisible())
                layers.append(popup);
        }
    }
    return layers;
}

/// What is on top of the window: what was opened last, or the calculator.
const QQuickItem& ScreensTest::top() const
{
    const QList<const QQuickItem*> over = layers();
    return over.isEmpty() ? *m_window->contentItem() : *over.last();
}

QList<Screen> ScreensTest::screens()
{
    const auto flag = [this](const char* name) { return [this, name] { set(*m_view, name); }; };
    const auto inList = [this](const char* name) {
        return [this, name] {
            openList();
            set(*m_app->historyView(), name);
        };
    };
    return {
        { QStringLiteral("calculator"), 0, [] {} },
        { QStringLiteral("amount refused"), 0,
            [this] {
                m_view->billEdited(QStringLiteral("a lot"));
                QVERIFY(!m_view->billNotice().isEmpty());
            } },
        { QStringLiteral("menu"), 1, [this] { QTest::keyClick(m_window, Qt::Key_F10); } },
        { QStringLiteral("clear"), 1, flag("showClear") },
        { QStringLiteral("copied"), 1, flag("showCopied") },
        { QStringLiteral("save"), 1, [this] { m_view->save(); } },
        { QStringLiteral("save, too long"), 1,
            [this] {
                m_view->save();
                m_view->setBillDescription(QString(Item::longestRef + 1, QLatin1Char('x')));
                QVERIFY(!m_view->descriptionNotice().isEmpty());
            } },
        { QStringLiteral("save failed"), 1, flag("showSaveFailed") },
        { QStringLiteral("settings"), 1, flag("showSettings") },
        { QStringLiteral("list"), 1, [this] { openList(); } },
        { QStringLiteral("list, being edited"), 1, inList("isEditing") },
        { QStringLiteral("delete all"), 2, inList("promptToDelete") },
        { QStringLiteral("delete old"), 2, inList("promptToDeleteOld") },
        { QStringLiteral("page"), 1, [this] { openPage(); } },
        { QStringLiteral("rename"), 2,
            [this] {
                openPage();
                m_app->historyView()->askForDescription();
            } },
        { QStringLiteral("use"), 2,
            [this] {
                openPage();
                set(*m_app->historyView(), "showUseThisBill");
            } },
        { QStringLiteral("share"), 1, [this] { m_view->shareButton(); } },
        { QStringLiteral("code"), 1, [this] { openCode(); } },
    };
}

void ScreensTest::set(QObject& view, const char* flag) { QVERIFY(view.setProperty(flag, true)); }

void ScreensTest::openList() { set(*m_view, "showHistory"); }

void ScreensTest::openPage()
{
    openList();
    m_app->historyView()->choose(0);
    QVERIFY(m_app->historyView()->detail());
}

void ScreensTest::openCode()
{
    m_view->shareButton();
    for (ActivityModel* const group : m_app->activityViewController()->groups()) {
        for (int row = 0; row < group->rowCount(); ++row) {
            auto* const activity
                = group->index(row).data(ActivityModel::ActivityRole).value<Activity*>();
            if (!activity->page().isEmpty())
                return m_app->activityViewController()->choose(activity);
        }
    }
    QFAIL("Nothing has a page in the share sheet.");
}

void ScreensTest::show(const Screen& screen)
{
    screen.open();
    rest();
    QVERIFY2(layers().size() == screen.layers, qPrintable(screen.name));
}

void ScreensTest::close()
{
    m_view->billEditingFinished();
    while (&top() != m_window->contentItem()) {
        const QQuickItem* const before = &top();
        QTest::keyClick(m_window, Qt::Key_Escape);
        QTRY_VERIFY(&top() != before);
    }
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
    start(direction);
    // The share sheet shows the first lines of what it hands over.
    const QStringList ofAnyLength { longDescription, m_view->shareString().trimmed() };

    QStringList faults;
    for (const double scale : scales) {
        scaleText(scale);
        for (const Screen& screen : screens()) {
            show(screen);
            for (const int width : widths) {
                resize(width);
                const QStringList found = faultsOf(drawn(), ofAnyLength);
                for (const QString& fault : found)
                    faults.append(QStringLiteral("%1, text %2, width %3: %4")
                                      .arg(screen.name)
                                      .arg(scale)
                                      .arg(width)
                                      .arg(fault));
            }
            close();
        }
    }
    scaleText(1.0);
    expectNone(faults);
}

void ScreensTest::everythingIsMirroredForWhoReadsFromRightToLeft()
{
    const auto look = [this] {
        QMap<QString, std::vector<Drawn>> seen;
        for (const int width : { usualWidth, 1000 }) {
            resize(width);
            for (const Screen& screen : screens()) {
                show(screen);
                seen.insert(screen.name + QString::number(width), drawn());
                close();
            }
        }
        return seen;
    };
    start(Qt::LeftToRight);
    const auto leftToRight = look();
    start(Qt::RightToLeft);
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
    start(Qt::LeftToRight);

    const std::vector<Drawn> seen = drawn();

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
    start(Qt::LeftToRight);
    const auto back = qScopeGuard([this, before = UserSettings::shared().people()] {
        UserSettings::shared().setPeople(before);
        scaleText(1.0);
    });
    UserSettings::shared().setPeople(people);

    QStringList faults;
    for (const double scale : { 1.0, 2.0 }) {
        scaleText(scale);
        for (const int width : { 500, 320 }) {
            resize(width);
            const std::vector<Drawn> seen = drawn();
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
    start(Qt::LeftToRight);
    for (const char* const flag : { "showSettings", "showHistory" }) {
        set(*m_view, flag);
        const QQuickItem& sheet = top();
        QCOMPARE(layers().size(), 1);
        const double place = sheet.y();

        rest();

        QCOMPARE(sheet.y(), place);
        close();
    }
}

/// What speaks of the results; null where nothing does.
const QObject* ScreensTest::announcer() const
{
    QList<const QQuickItem*> items { m_window->contentItem() };
    while (!items.isEmpty()) {
        const QQuickItem* const item = items.takeLast();
        if (QByteArrayView(item->metaObject()->className()).startsWith("ResultsAnnouncer"))
            return item;
        for (const QQuickItem* const child : item->childItems())
            items.append(child);
    }
    return nullptr;
}

void ScreensTest::resultsAreAnnouncedWhereNothingCoversThem()
{
    start(Qt::LeftToRight);
    QAccessible::setActive(true);
    const auto back = qScopeGuard([] { QAccessible::setActive(false); });
    const QObject* const speaker = announcer();
    QVERIFY(speaker);

    for (const Screen& screen : screens()) {
        show(screen);
        QVERIFY2(
            speaker->property("held").toBool() == (screen.layers > 0), qPrintable(screen.name));
        close();
        QVERIFY2(!speaker->property("held").toBool(), qPrintable(screen.name));
    }
}

void ScreensTest::zerosInThePlaceOfResultsAreNotAnnounced()
{
    start(Qt::LeftToRight);
    QAccessible::setActive(true);
    UserSettings& settings = UserSettings::shared();
    const auto back = qScopeGuard([&settings, bill = settings.bill()] {
        settings.setBill(bill);
        QAccessible::setActive(false);
    });
    const QObject* const speaker = announcer();
    QVERIFY(speaker);
    QVERIFY(!speaker->property("held").toBool());

    settings.setBill(9e16);

    QVERIFY(!m_view->hasResults());
    QVERIFY(speaker->property("held").toBool());
}

void ScreensTest::whatIsWrongIsFound_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("fault");
    QTest::addRow("nothing") << QByteArray("Text { text: 'Word' }") << QString();
    QTest::addRow("dots") << QByteArray(
        "Text { width: 20; elide: Text.ElideRight; text: 'A word' }")
                          << QStringLiteral("is cut");
    QTest::addRow("a text of any length that ends in dots")
        << QByteArray("Text { width: 20; elide: Text.ElideRight; text: 'Any word' }") << QString();
    QTest::addRow("a text wider than its item")
        << QByteArray("Text { width: 20; text: 'A long word' }") << QStringLiteral("is cut");
    QTest::addRow("a text higher than its item")
        << QByteArray("Text { height: 5; text: 'Word' }") << QStringLiteral("is cut");
    QTest::addRow("a text out of its row")
        << QByteArray("Rectangle { width: 20; height: 30; Text { text: 'A long word' } }")
        << QStringLiteral("leaves QQuickRectangle");
    QTest::addRow("a text out of the window")
        << QByteArray("Text { x: 190; text: 'A long word' }") << QStringLiteral("leaves");
    QTest::addRow("a text over another one")
        << QByteArray("Text { text: 'Word' } Text { x: 4; text: 'Other' }")
        << QStringLiteral("lies over");
    QTest::addRow("a text scrolled below another one")
        << QByteArray("Text { text: 'Word' } Flickable { y: 40; width: 200; height: 60; clip: true;"
                      " contentY: 20; contentHeight: 200; Text { text: 'Other' } }")
        << QString();
    QTest::addRow("a text without room")
        << QByteArray("Text { width: 0.1; elide: Text.ElideRight; text: 'Any word' }")
        << QStringLiteral("has no room");
    QTest::addRow("a figure that is too small")
        << QByteArray("FigureText { width: implicitWidth / 2; text: '1,234.00' }")
        << QStringLiteral("is drawn too small");
    QTest::addRow("an icon over a text")
        << QByteArray("Text { text: 'Word' } Icon { name: 'plus' }") << QStringLiteral("lies over");
}

void ScreensTest::whatIsWrongIsFound()
{
    QFETCH(const QByteArray, body);
    QFETCH(const QString, fault);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(
        "import QtQuick\nimport Vexilo.Controls\nItem { width: 200; height: 100; " + body + "}",
        {});
    const std::unique_ptr<QObject> made(component.create());
    QVERIFY2(made, qPrintable(component.errorString()));
    auto* const item = qobject_cast<QQuickItem*>(made.get());
    QQuickWindow window;
    item->setParentItem(window.contentItem());
    window.resize(200, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    const QStringList found = faultsOf(drawnIn(*item), { QStringLiteral("Any") });

    QCOMPARE(found.isEmpty(), fault.isEmpty());
    QVERIFY2(
        found.join(QLatin1Char('\n')).contains(fault), qPrintable(found.join(QLatin1Char('\n'))));
}

void ScreensTest::whatIsNotMirroredIsFound()
{
    const std::vector<Drawn> one { { .text = QStringLiteral("Word"), .place = { 10, 0, 30, 10 } } };
    const std::vector<Drawn> other { { .text = QStringLiteral("Word"),
        .place = { 60, 0, 30, 10 } } };

    QVERIFY(unmirrored(one, other, 100.0).isEmpty());
    QCOMPARE(unmirrored(one, one, 100.0).size(), 1);
    QCOMPARE(unmirrored(one, {}, 100.0).size(), 1);
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
