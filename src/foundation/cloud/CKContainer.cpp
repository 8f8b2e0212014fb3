#include "CKContainer.h"

#include "Bundle.h"

#include <QThreadPool>

#include <mutex>

namespace {

std::mutex sourceMutex;

CKContainer::AccountSource& source()
{
    static CKContainer::AccountSource instance;
    return instance;
}

} // namespace

const CKContainer& CKContainer::defaultContainer()
{
    static const CKContainer instance(Bundle::main()
                                          .stringForInfoKey(QStringLiteral("CKContainerIdentifier"))
                                          .value_or(QString()));
    return instance;
}

CKContainer::CKContainer(QString identifier)
    : m_identifier(std::move(identifier))
{
}

void CKContainer::setAccountSource(AccountSource newSource)
{
    const std::scoped_lock lock(sourceMutex);
    source() = std::move(newSource);
}

void CKContainer::accountStatus(const std::function<void(const AccountAnswer&)>& completion) const
{
    QThreadPool::globalInstance()->start([completion] {
        AccountSource ask;
        {
            const std::scoped_lock lock(sourceMutex);
            ask = source();
        }
        completion(ask ? ask() : AccountAnswer());
    });
}
