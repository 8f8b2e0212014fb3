#pragma once

#include <QString>

#include <functional>

class QObject;

/// Asks the desktop portal whether it has an interface, without waiting: a desktop has those for
/// which it has a backend. The function is called, at most once, with a yes, and while the context
/// lives.
void whenPortalHas(const QString& interface, QObject* context, const std::function<void()>& yes);

/// The same with a no, which is also what a desktop without a portal says.
void whenPortalLacks(const QString& interface, QObject* context, const std::function<void()>& no);
