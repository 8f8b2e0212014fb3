#include "NSManagedObject.h"

#include "Diagnostics.h"
#include "NSManagedObjectContext.h"

namespace {

[[noreturn]] void stop(const NSEntityDescription& entity, const QString& key, const char* problem)
{
    const QString text = entity.name() + QLatin1Char('.') + key + QLatin1String(problem);
    fatalError(text.toStdString());
}

} // namespace

NSManagedObject::NSManagedObject(const NSManagedObjectSeed& seed)
    : m_context(seed.context)
    , m_id(seed.id)
{
}

NSManagedObject::~NSManagedObject()
{
    if (m_context != nullptr)
        m_context->forget(*this);
}

int NSManagedObject::requiredIndex(const QString& key) const
{
    const std::optional<int> index = entity().indexOfAttribute(key);
    if (!index)
        stop(entity(), key, " is no attribute");
    return *index;
}

const AttributeValue& NSManagedObject::attribute(int index) const
{
    if (index < 0 || index >= entity().attributeCount())
        stop(entity(), QString::number(index), " is no attribute");
    if (m_isFault && m_context != nullptr)
        m_context->fireFault(const_cast<NSManagedObject&>(*this)); // NOLINT: reading fills in
    return m_isFault ? entity().defaultValues()[static_cast<std::size_t>(index)]
                     : m_values[static_cast<std::size_t>(index)];
}

QVariant NSManagedObject::value(const QString& key) const
{
    return toVariant(attribute(requiredIndex(key)));
}

void NSManagedObject::setAttribute(int index, AttributeValue value)
{
    const AttributeValue& present = attribute(index);
    const auto position = static_cast<std::size_t>(index);
    if (!isAbsentOr(entity().attributes()[position].type, value))
        stop(entity(), entity().attributes()[position].name, " was set to a value of another type");
    if (m_isFault || isDeleted() || m_context == nullptr || isSame(present, value))
        return;
    if (m_state == State::Clean) {
        m_committed = std::make_unique<AttributeValues>(m_values);
        m_state = State::Updated;
        m_context->noteChanged(*this);
    }
    m_values[position] = std::move(value);
    m_unannounced |= quint64(1) << position;
    if (!m_isTouched)
        m_context->touch(*this);
}

void NSManagedObject::setValue(const QVariant& value, const QString& key)
{
    const int index = requiredIndex(key);
    const auto type = entity().attributes()[static_cast<std::size_t>(index)].type;
    std::optional<AttributeValue> converted = fromVariant(value, type);
    if (!converted)
        stop(entity(), key, " was set to a value of another type");
    setAttribute(index, std::move(*converted));
}

quint64 NSManagedObject::changedAttributes() const
{
    if (m_state == State::Inserted)
        return (quint64(1) << m_values.size()) - 1;
    quint64 changed = 0;
    if (m_committed != nullptr) {
        for (std::size_t i = 0; i < m_values.size(); ++i) {
            if (!isSame(m_values[i], (*m_committed)[i]))
                changed |= quint64(1) << i;
        }
    }
    return changed;
}

void NSManagedObject::fulfil(AttributeValues values, qint64 version)
{
    m_values = std::move(values);
    m_version = version;
    m_isFault = false;
    m_batch.reset();
}

void NSManagedObject::turnIntoFault()
{
    m_values = {};
    m_committed.reset();
    m_isFault = true;
}
