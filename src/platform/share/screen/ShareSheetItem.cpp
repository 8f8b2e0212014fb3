#include "ShareSheetItem.h"

#include "RootViewController.h"

#include <QQuickWindow>

#include <memory>
#include <utility>

void ShareSheetItem::setIsPresented(bool isPresented)
{
    if (isPresented == m_isPresented)
        return;
    if (!isPresented && isOpen()) {
        m_controller->close(); // whose completion comes back here
        return;
    }
    m_isPresented = isPresented;
    Q_EMIT isPresentedChanged();
    if (m_isPresented && window() && isComponentComplete())
        present();
}

void ShareSheetItem::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange && data.window && m_isPresented && isComponentComplete())
        present();
}

void ShareSheetItem::componentComplete()
{
    QQuickItem::componentComplete();
    if (m_isPresented && window())
        present();
}

void ShareSheetItem::present()
{
    std::unique_ptr<UIActivityViewController> controller = sheet().makeController();
    m_controller = controller.get();
    RootViewController::of(*window()).present(std::move(controller));
}

bool ShareSheetItem::isOpen() const
{
    return m_controller && m_controller->state() != UIActivityViewController::Finished;
}

ShareSheet ShareSheetItem::sheet()
{
    // The sheet belongs to the window, which may outlive this item.
    const QPointer<ShareSheetItem> self(this);
    ShareSheet sheet({ .get = [this] { return m_isPresented; },
                         .set =
                             [self](bool isPresented) {
                                 if (self)
                                     self->setIsPresented(isPresented);
                             } },
        { .get = [this] { return m_activityItem; }, .set = {} },
        [self](const std::optional<ActivityType>& type, bool completed,
            const std::optional<QVariantList>& returnedItems,
            const std::optional<ActivityError>& error) {
            if (self)
                Q_EMIT self->callback(type.value_or(QString()), completed,
                    returnedItems.value_or(QVariantList()), error ? error->description : QString());
        });
    if (!m_excludedActivityTypes.isEmpty())
        sheet.excludedActivityTypes = m_excludedActivityTypes;
    return sheet;
}
