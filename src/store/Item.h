#pragma once

#include "NSFetchRequest.h"
#include "NSManagedObject.h"

/// One saved bill: what was typed, and what was computed from it when it was saved. Amounts are in
/// the currency of the user, uncut where they were typed.
///
/// Every accessor reads and writes the object of the context, so that all who share the context
/// see a change at once.
class Item : public NSManagedObject {
public:
    using NSManagedObject::NSManagedObject;

    /// The longest description, in bytes of UTF-8.
    static constexpr qsizetype longestRef = 4096;

    /// A new record in the context, to be saved with it.
    [[nodiscard]] static std::shared_ptr<Item> make(NSManagedObjectContext& context);
    /// Every saved bill, in the store's order.
    [[nodiscard]] static NSFetchRequest fetchRequest();
    /// Whether the entity has the attributes that the accessors stand for.
    [[nodiscard]] static bool isDescribedBy(const NSEntityDescription& entity);
    /// The text with a blank for each line break: what another program stored may have some.
    [[nodiscard]] static QString oneLine(const QString& text);
    /// What was typed, as a description: one line. Nothing where it is longer than longestRef.
    [[nodiscard]] static std::optional<QString> refFromText(const QString& text);

    /// As typed.
    [[nodiscard]] double bill() const { return get<double>(BillIndex); }
    void setBill(double value) { setAttribute(BillIndex, value); }
    [[nodiscard]] bool everyone() const { return get<bool>(EveryoneIndex); }
    void setEveryone(bool value) { setAttribute(EveryoneIndex, value); }
    [[nodiscard]] qint32 people() const { return get<qint32>(PeopleIndex); }
    void setPeople(qint32 value) { setAttribute(PeopleIndex, value); }
    /// The user's description.
    [[nodiscard]] std::optional<QString> ref() const { return getOptional<QString>(RefIndex); }
    void setRef(const QString& value) { setAttribute(RefIndex, value); }
    [[nodiscard]] bool roundshare() const { return get<bool>(RoundshareIndex); }
    void setRoundshare(bool value) { setAttribute(RoundshareIndex, value); }
    [[nodiscard]] bool roundtip() const { return get<bool>(RoundtipIndex); }
    void setRoundtip(bool value) { setAttribute(RoundtipIndex, value); }
    /// A segment index of the service picker.
    [[nodiscard]] qint32 service() const { return get<qint32>(ServiceIndex); }
    void setService(qint32 value) { setAttribute(ServiceIndex, value); }
    [[nodiscard]] double share() const { return get<double>(ShareIndex); }
    void setShare(double value) { setAttribute(ShareIndex, value); }
    /// When the bill was saved, to the millisecond.
    [[nodiscard]] std::optional<QDateTime> timestamp() const
    {
        return getOptional<QDateTime>(TimestampIndex);
    }
    void setTimestamp(const QDateTime& value) { setAttribute(TimestampIndex, value); }
    [[nodiscard]] double tip() const { return get<double>(TipIndex); }
    void setTip(double value) { setAttribute(TipIndex, value); }
    [[nodiscard]] double total() const { return get<double>(TotalIndex); }
    void setTotal(double value) { setAttribute(TotalIndex, value); }

private:
    enum Index {
        BillIndex,
        EveryoneIndex,
        PeopleIndex,
        RefIndex,
        RoundshareIndex,
        RoundtipIndex,
        ServiceIndex,
        ShareIndex,
        TimestampIndex,
        TipIndex,
        TotalIndex,
        AttributeCount
    };

    template <class T> [[nodiscard]] std::optional<T> getOptional(Index index) const
    {
        const T* const value = std::get_if<T>(&attribute(index));
        return value ? std::optional<T>(*value) : std::nullopt;
    }
    template <class T> [[nodiscard]] T get(Index index) const
    {
        return getOptional<T>(index).value_or(T());
    }
};
