#include "JsonLine.h"
#include "MirrorText.h"

#include <QTest>

using mirror::JsonLimits;
using mirror::JsonValue;
using mirror::Text;

namespace {

QByteArray array(const QByteArray& elements) { return "{\"a\":[" + elements + "]}"; }

QByteArray objectOfMembers(int count)
{
    QByteArray members;
    for (int i = 0; i < count; ++i)
        members += (i == 0 ? "\"" : ",\"") + QByteArray::number(i) + "\":0";
    return "{" + members + "}";
}

QByteArray memberOfSize(qsizetype size) { return "{\"a\":\"" + QByteArray(size, 'x') + "\"}"; }

} // namespace

class JsonLineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsReadIsWrittenAsItStood_data()
    {
        QTest::addColumn<QByteArray>("line");

        QTest::newRow("empty") << QByteArray("{}");
        QTest::newRow("members keep their order") << QByteArray(R"({"b":1,"a":2})");
        QTest::newRow("literals") << array("null,true,false");
        QTest::newRow("empty containers") << array("[],{}");
        QTest::newRow("largest integer") << array("9223372036854775807");
        QTest::newRow("least integer") << array("-9223372036854775808");
        QTest::newRow("larger than 64 bits") << array("123456789012345678901234567890");
        QTest::newRow("unsigned 64 bits") << array("18446744073709551615");
        QTest::newRow("fraction with zeros") << array("1.500");
        QTest::newRow("exponent") << array("1E+2");
        QTest::newRow("more digits than a double has") << array("0.1000000000000000055511151");
        QTest::newRow("escapes") << QByteArray("{\"\\\"\\\\\\n\\t\":\"\\u0000\\u001f\"}");
        QTest::newRow("beyond ASCII") << QByteArray("{\"\xc3\xa9\":\"\xf0\x9f\x98\x80\"}");
        QTest::newRow("line separators") << QByteArray("{\"a\":\"\xe2\x80\xa8\x7f\"}");
        QTest::newRow("four levels") << QByteArray(R"({"a":[{"b":[]}]})");
    }
    void whatIsReadIsWrittenAsItStood()
    {
        QFETCH(const QByteArray, line);

        QCOMPARE(mirror::readJsonLine(line).value().toText(), line);
    }

    void blanksAndEscapesAreNotKept()
    {
        QCOMPARE(mirror::readJsonLine(R"({ "a" : [ "\u00e9\/" , 1 ] } )").value().toText(),
            QByteArray("{\"a\":[\"\xc3\xa9/\",1]}"));
    }

    void aMemberIsFoundByItsName()
    {
        const JsonValue object = mirror::readJsonLine(R"({"a":1,"b":2})").value();

        QCOMPARE(object.member("b")->integer, 2);
        QVERIFY(object.member("c") == nullptr);
        QVERIFY(object.member("b")->member("a") == nullptr);
    }

    void whatIsNoObjectIsRefused_data()
    {
        QTest::addColumn<QByteArray>("line");

        QTest::newRow("empty") << QByteArray();
        QTest::newRow("array") << QByteArray("[]");
        QTest::newRow("number") << QByteArray("1");
        QTest::newRow("blank before") << QByteArray(" {}");
        QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf{}");
        QTest::newRow("two objects") << QByteArray("{}{}");
        QTest::newRow("text after") << QByteArray("{}x");
        QTest::newRow("NUL after") << QByteArray("{}\0x", 4);
        QTest::newRow("NUL within") << QByteArray("{\"a\":1\0}", 8);
        QTest::newRow("carriage return") << QByteArray("{}\r");
        QTest::newRow("tab") << QByteArray("{\t}");
        QTest::newRow("not closed") << QByteArray("{\"a\":1");
        QTest::newRow("trailing comma") << QByteArray("{\"a\":1,}");
        QTest::newRow("comment") << QByteArray("{/**/}");
        QTest::newRow("single quotes") << QByteArray("{'a':1}");
        QTest::newRow("name without quotes") << QByteArray("{a:1}");
        QTest::newRow("capital literal") << array("True");
        QTest::newRow("not a number") << array("NaN");
        QTest::newRow("infinity") << array("Infinity");
        QTest::newRow("beyond every double") << array("1e999");
        QTest::newRow("leading zero") << array("01");
        QTest::newRow("plus") << array("+1");
        QTest::newRow("bare point") << array("1.");
        QTest::newRow("hexadecimal") << array("0x1");
        QTest::newRow("name given twice") << QByteArray(R"({"a":1,"a":1})");
        QTest::newRow("inner name given twice") << array(R"({"b":1,"c":2,"b":1})");
        QTest::newRow("name given twice by escape") << QByteArray("{\"a\":1,\"\\u0061\":1}");
        QTest::newRow("unknown escape") << array(R"("\x41")");
        QTest::newRow("lone surrogate") << array(R"("\ud800")");
        QTest::newRow("reversed surrogates") << array(R"("\ude00\ud83d")");
        QTest::newRow("invalid UTF-8") << array("\"\xff\"");
        QTest::newRow("overlong UTF-8") << array("\"\xc0\x80\"");
        QTest::newRow("surrogate in UTF-8") << array("\"\xed\xa0\x80\"");
        QTest::newRow("beyond Unicode") << array("\"\xf4\x90\x80\x80\"");
        QTest::newRow("cut UTF-8") << QByteArray("{\"a\":\"\xe2\x82\"}");
        QTest::newRow("five levels") << QByteArray(R"({"a":[{"b":[[]]}]})");
        QTest::newRow("nesting without end") << QByteArray("{\"a\":" + QByteArray(60'000, '['));
    }
    void whatIsNoObjectIsRefused()
    {
        QFETCH(const QByteArray, line);

        QVERIFY(!mirror::readJsonLine(line));
    }

    void aLimitIsReachedAndNotPassed()
    {
        QVERIFY(mirror::readJsonLine(memberOfSize(JsonLimits::TextBytes)));
        QVERIFY(!mirror::readJsonLine(memberOfSize(JsonLimits::TextBytes + 1)));

        QVERIFY(mirror::readJsonLine(objectOfMembers(JsonLimits::Values - 1)));
        QVERIFY(!mirror::readJsonLine(objectOfMembers(JsonLimits::Values)));

        const QByteArray full = "{" + QByteArray(JsonLimits::LineBytes - 2, ' ') + "}";
        QVERIFY(mirror::readJsonLine(full));
        QVERIFY(!mirror::readJsonLine(QByteArray(full + " ")));
    }

    void aNameIsLimitedAsATextIs()
    {
        const QByteArray name(JsonLimits::TextBytes, 'x');

        QVERIFY(mirror::readJsonLine(QByteArray("{\"" + name + "\":1}")));
        QVERIFY(!mirror::readJsonLine(QByteArray("{\"x" + name + "\":1}")));
    }

    void aTextTooLongIsCutBetweenCharacters_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qsizetype>("size");
        const QString ascii(Text::MaxBytes - 3, u'x');

        QTest::newRow("fits") << QString(ascii + u"xxx") << qsizetype(4096);
        QTest::newRow("one too many") << QString(ascii + u"xxxx") << qsizetype(4096);
        QTest::newRow("four bytes over the end")
            << QString(ascii + u"\U0001F600") << qsizetype(4093);
        QTest::newRow("three bytes at the end") << QString(ascii + u"\u20ACx") << qsizetype(4096);
        QTest::newRow("two bytes over the end") << QString(ascii + u"xx\u00E9") << qsizetype(4095);
    }
    void aTextTooLongIsCutBetweenCharacters()
    {
        QFETCH(const QString, text);
        QFETCH(const qsizetype, size);

        const Text cut = Text::of(text);

        QCOMPARE(cut.utf8().size(), size);
        QVERIFY(text.startsWith(cut.toString()));
        QCOMPARE(Text::fromUtf8(cut.utf8()), cut);
    }

    void aLoneSurrogateIsReplaced()
    {
        const Text text = Text::of(QString(QChar(0xd800)));

        QCOMPARE(Text::fromUtf8(text.utf8()), text);
    }

    void bytesThatAreNoTextAreRefused()
    {
        QVERIFY(!Text::fromUtf8("\xff"));
        QVERIFY(!Text::fromUtf8("\xed\xa0\x80"));
        QVERIFY(!Text::fromUtf8(QByteArray(Text::MaxBytes + 1, 'x')));
    }

    void textsSortByTheirBytes()
    {
        QVERIFY(Text::of(u"") < Text::of(u"a"));
        QVERIFY(Text::of(u"a") < Text::of(u"a\u00E9"));
        QVERIFY(Text::of(u"z") < Text::of(u"\u00E9"));
        QVERIFY(Text::of(u"\uFF5E") < Text::of(u"\U0001F600")); // the other way round in UTF-16
    }
};

QTEST_APPLESS_MAIN(JsonLineTest)
#include "JsonLineTest.moc"
