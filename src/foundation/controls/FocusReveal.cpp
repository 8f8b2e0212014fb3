#include "FocusReveal.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <algorithm>

namespace {

constexpr double surroundings = 24.0; // points that stay in sight above and below the item

} // namespace

void FocusReveal::setFlickable(QQuickItem* flickable)
{
    if (flickable == m_flickable)
        return;
    if (m_flickable)
        m_flickable->disconnect(this);
    m_flickable = flickable;
    if (flickable)
        connect(flickable, &QQuickItem::windowChanged, this, &FocusReveal::follow);
    follow(flickable ? flickable->window() : nullptr);
    Q_EMIT flickableChanged();
}

void FocusReveal::follow(QQuickWindow* window)
{
    disconnect(m_windowConnection);
    if (!window)
        return;
    m_windowConnection
        = connect(window, &QQuickWindow::activeFocusItemChanged, this, [this, window] {
              const QQuickItem* const item = window->activeFocusItem();
              const bool pointing = QGuiApplication::mouseButtons() != Qt::NoButton;
              if (item && m_flickable && !pointing && m_flickable->isAncestorOf(item))
                  reveal(*item);
          });
}

void FocusReveal::reveal(const QQuickItem& item)
{
    const auto* const content = m_flickable->property("contentItem").value<QQuickItem*>();
    const QRectF place = item.mapRectToItem(content, QRectF(QPointF(), item.size()));
    const double height = m_flickable->height();
    const double bottom = std::max(0.0, m_flickable->property("contentHeight").toDouble() - height);
    const double top = m_flickable->property("contentY").toDouble();
    // The item's upper end goes first where there is no room for both.
    const double lowest = place.top() - surroundings;
    const double highest = std::min(lowest, place.bottom() + surroundings - height);
    const double target = std::clamp(std::clamp(top, highest, lowest), 0.0, bottom);
    if (target != top)
        m_flickable->setProperty("contentY", target);
}
