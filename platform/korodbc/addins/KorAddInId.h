#pragma once

#include <korodbc/roots/KorString.h>

/// Identity of an add-in.
class KorAddInId {
public:
    KorAddInId() = default;
    explicit KorAddInId(const KorString& id) : m_id(id) {}
    const KorString& getText() const { return m_id; }
    friend bool operator==(const KorAddInId&, const KorAddInId&) = default;

private:
    KorString m_id;
};

/// What the add-in manager knows of an add-in.
class KorAddIn {
public:
    virtual ~KorAddIn() = default;
    virtual const KorAddInId& getId() const = 0;
    virtual const KorString& getName() const = 0;
    virtual bool isCountryAddIn() const = 0;
    /// Lets the add-in finish its loading; called once its database can be reached.
    virtual void completeLoading() = 0;
};
