#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

class NSManagedObjectModel;

/// What is mirrored, and as what.
struct CloudSetup {
    QString storeFile; ///< opened before by a container
    std::shared_ptr<const NSManagedObjectModel> model;
    QString entity; ///< whose records are mirrored
    QString renamable; ///< its one text that changes after a record was made
    QByteArray format; ///< the "fmt" of the files, for example "program-records"
    QString container; ///< the folder on the server, without slashes
    QByteArray readme; ///< for people who find that folder
    QByteArray userAgent; ///< program and version
    QString choiceKey; ///< of the value that says whether the user wants all this
};
