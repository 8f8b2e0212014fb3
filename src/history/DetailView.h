#pragma once

#include "Item.h"
#include "UserSettings.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The lines of one saved bill, as texts. They follow the record and the settings.
class DetailView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The screen's state makes it for the chosen bill.")
    Q_PROPERTY(QString bill READ bill NOTIFY changed)
    Q_PROPERTY(QString people READ people NOTIFY changed)
    Q_PROPERTY(QString service READ service NOTIFY changed)
    Q_PROPERTY(QString total READ total NOTIFY changed)
    Q_PROPERTY(QString share READ share NOTIFY changed)
    Q_PROPERTY(QString tip READ tip NOTIFY changed)
    Q_PROPERTY(QString everyone READ everyone NOTIFY changed)
    Q_PROPERTY(QString roundtip READ roundtip NOTIFY changed)
    Q_PROPERTY(QString roundshare READ roundshare NOTIFY changed)
    Q_PROPERTY(QString savedOn READ savedOn NOTIFY changed)

public:
    /// The settings must outlive this object.
    DetailView(
        std::shared_ptr<Item> item, const UserSettings& userSettings, QObject* parent = nullptr);

    [[nodiscard]] const std::shared_ptr<Item>& item() const { return m_item; }

    [[nodiscard]] QString bill() const { return amountText(m_item->bill()); }
    [[nodiscard]] QString people() const { return QString::number(m_item->people()); }
    [[nodiscard]] QString service() const;
    [[nodiscard]] QString total() const { return amountText(m_item->total()); }
    [[nodiscard]] QString share() const { return amountText(m_item->share()); }
    [[nodiscard]] QString tip() const { return amountText(m_item->tip()); }
    [[nodiscard]] QString everyone() const;
    [[nodiscard]] QString roundtip() const;
    [[nodiscard]] QString roundshare() const;
    /// The whole line, day and time. A record without a stamp stops the process.
    [[nodiscard]] QString savedOn() const;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QString amountText(double amount) const;

    std::shared_ptr<Item> m_item;
    const UserSettings& m_userSettings;
};
