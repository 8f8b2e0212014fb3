#include "Layout.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

#include <memory>

Q_IMPORT_QML_PLUGIN(Vexilo_ControlsPlugin)

/// The judge of the screens' layout can tell what is wrong from what is not.
class LayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsWrongIsFound_data();
    void whatIsWrongIsFound();
    void whatIsNotMirroredIsFound();
};

void LayoutTest::whatIsWrongIsFound_data()
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

void LayoutTest::whatIsWrongIsFound()
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

void LayoutTest::whatIsNotMirroredIsFound()
{
    const std::vector<Drawn> one { { .text = QStringLiteral("Word"), .place = { 10, 0, 30, 10 } } };
    const std::vector<Drawn> other { { .text = QStringLiteral("Word"),
        .place = { 60, 0, 30, 10 } } };

    QVERIFY(unmirrored(one, other, 100.0).isEmpty());
    QCOMPARE(unmirrored(one, one, 100.0).size(), 1);
    QCOMPARE(unmirrored(one, {}, 100.0).size(), 1);
}

QTEST_MAIN(LayoutTest)
#include "LayoutTest.moc"
