#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusVirtualObject>
#include <QList>
#include <QStringList>
#include <QVariantMap>

/// A desktop portal with the interfaces that a test names, on the bus for the life of this object.
/// It keeps what it is asked, and answers as it is told.
class FakePortal : public QDBusVirtualObject {
    Q_OBJECT

public:
    struct Call {
        QString method = {};
        QVariantList arguments = {}; ///< without the options
        QVariantMap options = {};
        QByteArray document = {}; ///< what was read from a handed file descriptor
    };
    struct Answer {
        uint code = 0; ///< 0 done, 1 cancelled, 2 failed
        QVariantMap results = {};
    };

    FakePortal(const QString& address, QStringList interfaces);
    ~FakePortal() override;

    /// Answers a method in that way; one without an answer is not answered before `answer`.
    void setAnswer(const QString& method, const Answer& answer) { m_answers[method] = answer; }
    /// Returns an error from a method instead of a request.
    void setError(const QString& method, QDBusError::ErrorType error) { m_errors[method] = error; }
    /// Does not even return from a method.
    void setSilent(const QString& method) { m_silent = method; }
    /// Answers the last call.
    void answerNow(const Answer& answer);

    [[nodiscard]] const QList<Call>& calls() const { return m_calls; }
    /// How many requests were taken back.
    [[nodiscard]] int closed() const { return m_closed; }
    /// How many questions for what it has were answered.
    [[nodiscard]] int answered() const { return m_answered; }

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    bool handleProperty(const QDBusMessage& message);
    void keep(const QDBusMessage& message);

    QDBusConnection m_bus;
    const QStringList m_interfaces;
    QMap<QString, Answer> m_answers;
    QMap<QString, QDBusError::ErrorType> m_errors;
    QString m_silent;
    QList<Call> m_calls;
    QString m_lastCaller;
    QString m_lastHandle;
    int m_closed = 0;
    int m_answered = 0;
};
