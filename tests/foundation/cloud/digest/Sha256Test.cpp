#include "Sha256.h"

#include <QCryptographicHash>
#include <QTest>

class Sha256Test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theStandardsExamplesAreMet()
    {
        QCOMPARE(mirror::sha256({}),
            QByteArray("e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"));
        QCOMPARE(mirror::sha256("abc"),
            QByteArray("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"));
        QCOMPARE(mirror::sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            QByteArray("248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"));
        QCOMPARE(mirror::sha256(QByteArray(1'000'000, 'a')),
            QByteArray("cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"));
    }

    void anotherMakersHashIsTheSame()
    {
        QByteArray bytes;
        for (int i = 0; i < 300; ++i) {
            QCOMPARE(mirror::sha256(bytes),
                QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
            bytes += char(i * 7);
        }
    }

    void piecesAreHashedAsTheirWhole()
    {
        const QByteArray bytes(1000, 'x');

        for (qsizetype end = 0; end <= bytes.size(); ++end) {
            mirror::Sha256 hash;
            hash.add(bytes.first(end));
            hash.add(bytes.sliced(end));
            QCOMPARE(hash.takeResult(), mirror::sha256(bytes));
        }
    }

    void aTakenResultIsFollowedByANewBeginning()
    {
        mirror::Sha256 hash;
        hash.add("abc");
        (void)hash.takeResult();
        hash.add("def");

        QCOMPARE(hash.takeResult(), mirror::sha256("def"));
    }
};

QTEST_APPLESS_MAIN(Sha256Test)
#include "Sha256Test.moc"
