#pragma once

#include "ModelClaims.h"

/// Several devices and one folder, on which things happen at random, and go wrong at random.
/// Functions throw a Violation.
class MirrorModel {
public:
    explicit MirrorModel(quint32 seed);
    ~MirrorModel();

    /// So many random events, with faults.
    void act(int events);
    /// Without faults, until nothing changes any more; then all that must hold is checked.
    void settle();

private:
    using Fault = mirror::MemoryFileStore::Fault;
    using Request = mirror::MemoryFileStore::Request;

    void addDevice();
    ModelDevice& anyDevice();
    void happen();
    void cloneProfile();
    void deleteZone(ModelDevice& device);
    void edit(ModelDevice& device);
    void setValue(ModelDevice& device);
    void makeBill(ModelDevice& device);
    void rename(ModelDevice& device, const QUuid& id);
    void deleteBill(ModelDevice& device, const QUuid& id);
    std::optional<Fault> request(ModelDevice& device, const Request& request);
    std::optional<Fault> randomFault(const Request& request);
    void checkRequest(const ModelDevice& device, const Request& request);
    void rest();
    [[nodiscard]] QString picture();

    ModelWorld m_world;
    ModelClaims::Devices m_devices;
    ModelClaims m_claims;
    std::map<const ModelDevice*, std::pair<qint64, QString>> m_pictures; // at a revision
    quint32 m_bills = 0;
    int m_depth = 0; // of devices that act within another one's request
};
