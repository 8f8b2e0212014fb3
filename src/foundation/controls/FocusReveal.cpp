#include "FocusReveal.h"

#include <QGuiApplication>

#include <algorithm>

namespace {

constexpr double surroundings = 24.0; // points that stay in sight above and below the item

bool isPointing() { return QGuiApplication::mouseButtons() != Qt::NoButton; }

} // namespace

void FocusReveal::setFlickable(QQuickItem* flickable)
{
    if (flickable == m_flickable)
        return;
    if (m_flickable)
        m_flickable->disconnect(this);
    m_flickable = flickable;
    if (flickable) {
        connect(flickable, &QQuickItem::windowChanged, this, &FocusReveal::follow);
        connect(flickable, &QQuickItem::heightChanged, this, &FocusReveal::followSizes);
        // A Flickable is known here by its properties alone.
        connect(flickable, SIGNAL(contentHeightChanged()), this, SLOT(followSizes()));
        connect(flickable, SIGNAL(contentYChanged()), this, SLOT(followScrolling()));
    }
    follow(flickable ? flickable->window() : nullptr);
    Q_EMIT flickableChanged();
}

void FocusReveal::follow(QQuickWindow* window)
{
    disconnect(m_focusConnection);
    disconnect(m_layoutConnection);
    m_window = window;
    m_item = nullptr;
    m_itemIsInSight = false;
    if (window)
        m_focusConnection = connect(
            window, &QQuickWindow::activeFocusItemChanged, this, &FocusReveal::followFocus);
}

void FocusReveal::followFocus()
{
    QQuickItem* const item = m_window ? m_window->activeFocusItem() : nullptr;
    // A window that loses the keyboard has no such item, until a click may bring it back, which is
    // meant for what is below the pointer now.
    if (!item || !m_flickable || item == m_item)
        return;
    m_item = m_flickable->isAncestorOf(item) ? item : nullptr;
    if (m_item && isPointing())
        m_itemIsInSight = isInSight(*m_item);
    else if (m_item)
        reveal(*m_item);
    m_sizes = sizes();
}

void FocusReveal::followScrolling()
{
    // Another size scrolls, too, but nobody scrolled away from the item then.
    if (m_item && m_sizes == sizes())
        m_itemIsInSight = isInSight(*m_item);
}

void FocusReveal::followSizes()
{
    if (!m_item || !m_itemIsInSight)
        m_sizes = sizes();
    else if (m_window && !m_layoutConnection)
        revealAfterLayout();
}

/// Items have their new places only when the next frame was laid out.
void FocusReveal::revealAfterLayout()
{
    m_layoutConnection = connect(m_window, &QQuickWindow::frameSwapped, this,
        &FocusReveal::keepInSight, Qt::QueuedConnection);
}

void FocusReveal::keepInSight()
{
    disconnect(m_layoutConnection);
    if (!m_flickable)
        return;
    if (m_item && m_itemIsInSight && !isPointing())
        reveal(*m_item);
    m_sizes = sizes();
}

void FocusReveal::reveal(const QQuickItem& item)
{
    const QRectF place = placeOf(item);
    const double height = m_flickable->height();
    const double bottom = std::max(0.0, m_flickable->property("contentHeight").toDouble() - height);
    const double top = m_flickable->property("contentY").toDouble();
    // The item's upper end goes first where there is no room for both.
    const double lowest = place.top() - surroundings;
    const double highest = std::min(lowest, place.bottom() + surroundings - height);
    const double target = std::clamp(std::clamp(top, highest, lowest), 0.0, bottom);
    if (target != top)
        m_flickable->setProperty("contentY", target);
    m_itemIsInSight = true;
}

QSizeF FocusReveal::sizes() const
{
    return { m_flickable->height(), m_flickable->property("contentHeight").toDouble() };
}

/// Where the item stands in the content.
QRectF FocusReveal::placeOf(const QQuickItem& item) const
{
    const auto* const content = m_flickable->property("contentItem").value<QQuickItem*>();
    return item.mapRectToItem(content, QRectF(QPointF(), item.size()));
}

bool FocusReveal::isInSight(const QQuickItem& item) const
{
    const QRectF place = placeOf(item);
    const double top = m_flickable->property("contentY").toDouble();
    return place.top() >= top && place.bottom() <= top + m_flickable->height();
}
