#pragma once

#include "ModelDevice.h"

#include <set>

/// A claim about the mirror that does not hold, in words.
struct Violation {
    QString claim;
};

/// Throws a Violation where it does not hold.
void require(bool holds, const char* claim);

/// What must hold in a model: at every moment, before certain requests, and at rest. Functions
/// throw a Violation.
class ModelClaims {
public:
    using Devices = std::vector<std::unique_ptr<ModelDevice>>;

    ModelClaims(ModelWorld& world, const Devices& devices)
        : m_world(world)
        , m_devices(devices)
    {
    }

    // At every moment.

    /// A device that believes a row to be carried by a file is right: the files there say at least
    /// what the row is, unless something was lost, or deleted on purpose, meanwhile.
    void checkBeliefs();
    /// No row is ever lost, and none comes back; what the user switched on or off, stays so.
    void checkLife();

    /// Before a device deletes a file or a folder: what it says stands in others, or in a marker.
    void checkRemoval(const ModelDevice& device, const QString& path);
    /// Before a device makes an epoch: a missing one is not made again at once.
    void checkCreation(const ModelDevice& device) const;

    // At rest.

    /// Devices that mirror agree.
    void checkAgreement() const;
    /// No device waits for what is there, and no deletion is half done.
    void checkPhases() const;
    /// Where all mirror: the cloud holds everything, and every device every one of so many bills.
    void checkCompleteness(quint32 bills) const;

private:
    using Excuse = std::pair<QString, QString>; // a carrier's path and a row's key

    struct Revisions {
        qint64 device = -1;
        qint64 cloud = -1;

        bool operator==(const Revisions& other) const = default;
    };

    template <class Row>
    void checkBeliefs(const typename mirror::MemoryShelf<Row>::Data& shelf, bool isExcused);
    template <class Row>
    void checkAbsence(const typename mirror::MemoryShelf<Row>::Carried& carried, bool isExcused,
        std::map<QString, ModelCloud::Rows<Row>>& told);
    void checkRows(const ModelDevice& device);
    template <class Row>
    void checkCarriers(const typename mirror::MemoryShelf<Row>::Data& shelf) const;

    ModelWorld& m_world;
    const Devices& m_devices;
    std::set<Excuse> m_excused; // lost through no fault of a device
    std::map<int, Revisions> m_believed; // by device: when its beliefs were checked
    std::map<int, qint64> m_lived; // by device: when its rows were
    std::map<int, std::map<QUuid, bool>> m_isDead; // by device, of every row that it ever had
    std::map<QUuid, bool> m_isDeleted; // anywhere, of every row
};
