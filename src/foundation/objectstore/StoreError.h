#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>
#include <utility>
#include <variant>

/// One sentence for a person: in English for logs, and in the language of the texts for screens.
struct StoreText {
    /// English, in the translations' context "StoreError"; %1 and %2 are its places.
    const char* source = "";
    QStringList places = {};

    [[nodiscard]] QString english() const;
    [[nodiscard]] QString translated() const;
};

/// Why an operation of the store could not be carried out: an expected failure, handed back as a
/// value. Nothing was changed where one is returned, unless the operation says otherwise.
struct StoreError {
    enum class Code {
        ModelUnreadable, ///< the model resource is missing, no JSON, or describes nothing usable
        CannotOpen, ///< the file or its folder cannot be created or opened
        PermissionDenied, ///< the file or its folder may not be read or written
        Corrupt, ///< not a store file, or a damaged one
        NewerFormat, ///< written by a later version of this library
        IncompatibleModel, ///< written with a model that this one cannot take over
        NoStore, ///< the container has not loaded its store
        Locked, ///< another process kept the file locked for longer than the busy timeout
        DiskFull,
        InputOutput, ///< the file system reported a failure
        Conflict, ///< a record was changed or deleted elsewhere since it was read
        Validation, ///< a value that the model does not allow
        InvalidRequest, ///< an entity or attribute that the model does not have
        ObjectMissing, ///< no record of that identity
        GenerationUnavailable, ///< the context cannot be pinned
    };

    Code code = Code::InputOutput;
    StoreText description;
    QVariantMap userInfo; ///< details by name, such as "path" or "conflicts"

    /// Code and description in one line, in English.
    [[nodiscard]] QString toString() const;
    /// The same in the language of the texts.
    [[nodiscard]] QString translated() const;
    /// The details in one line: [name: value, ...], sorted by name.
    [[nodiscard]] QString userInfoText() const;
};

/// A value, or the reason why there is none.
template <class T = void> class [[nodiscard]] Result {
public:
    Result(T value) // NOLINT(google-explicit-constructor): reads as "return value;"
        : m_content(std::in_place_index<0>, std::move(value))
    {
    }
    Result(StoreError error) // NOLINT(google-explicit-constructor)
        : m_content(std::in_place_index<1>, std::move(error))
    {
    }

    explicit operator bool() const { return m_content.index() == 0; }
    T& value() { return std::get<0>(m_content); }
    const T& value() const { return std::get<0>(m_content); }
    T& operator*() { return value(); }
    const T& operator*() const { return value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }
    const StoreError& error() const { return std::get<1>(m_content); }

private:
    std::variant<T, StoreError> m_content;
};

/// Success without a value, or the reason of the failure.
template <> class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(StoreError error) // NOLINT(google-explicit-constructor)
        : m_error(std::move(error))
    {
    }

    explicit operator bool() const { return !m_error.has_value(); }
    const StoreError& error() const { return *m_error; }

private:
    std::optional<StoreError> m_error;
};
