#pragma once

#include "ShareSheet.h"

#include <QPointer>
#include <QQuickItem>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

/// Lets a view show a share sheet by a flag, which it sets to false when the sheet is finished:
///
///     ShareSheet {
///         isPresented: view.sharing
///         onIsPresentedChanged: view.sharing = isPresented
///     }
///
/// It stands anywhere in a window that has a root view controller, and is itself not seen.
class ShareSheetItem : public QQuickItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(ShareSheet)
    /// Shows the sheet while true; set to false when the user has finished with it.
    Q_PROPERTY(bool isPresented READ isPresented WRITE setIsPresented NOTIFY isPresentedChanged)
    /// The text to share, as it is when the sheet opens.
    Q_PROPERTY(QString activityItem MEMBER m_activityItem NOTIFY activityItemChanged)
    /// The destinations that are not offered.
    Q_PROPERTY(QStringList excludedActivityTypes MEMBER m_excludedActivityTypes NOTIFY
            excludedActivityTypesChanged)

public:
    using QQuickItem::QQuickItem;

    [[nodiscard]] bool isPresented() const { return m_isPresented; }
    /// A window without a root view controller stops the process. Setting it to false closes a
    /// sheet that the user has not finished with, as the user would.
    void setIsPresented(bool isPresented);

Q_SIGNALS:
    void isPresentedChanged();
    void activityItemChanged();
    void excludedActivityTypesChanged();
    /// What came of the sheet, before isPresented becomes false. An absent type or error is empty.
    void callback(const QString& activityType, bool completed, const QVariantList& returnedItems,
        const QString& error);

protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    [[nodiscard]] ShareSheet sheet();
    void present();
    [[nodiscard]] bool isOpen() const;

    QPointer<UIActivityViewController> m_controller; // of the root view controller
    bool m_isPresented = false;
    QString m_activityItem;
    QStringList m_excludedActivityTypes;
};
