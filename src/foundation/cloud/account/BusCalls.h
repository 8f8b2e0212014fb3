#pragma once

#include <QDBusConnection>
#include <QStringList>

#include <chrono>
#include <functional>

namespace mirror {

/// How long to wait for what a user may have to answer: whoever asked has gone away before that,
/// but an answer is still of use.
constexpr std::chrono::minutes promptPatience { 2 };

/// Tells, later and on the context's thread, which services on the bus are running or would be
/// started when they are spoken to; none where the bus does not answer in time. Starts none.
void findBusNames(const QDBusConnection& bus, std::chrono::milliseconds limit, QObject* context,
    const std::function<void(const QStringList&)>& tell);

/// Sends the call and hands on the answer, later and on the context's thread, which may be gone by
/// then. An answer that takes too long is an error.
void callBus(const QDBusConnection& bus, const QDBusMessage& call, std::chrono::milliseconds limit,
    QObject* context, const std::function<void(const QDBusMessage&)>& take);

} // namespace mirror
