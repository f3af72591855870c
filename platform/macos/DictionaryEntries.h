// A Foundation dictionary as its entries, and what a dictionary keyed by text makes of them.
#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace VendelSDK {

// One entry of a Foundation dictionary. Its key, when the key is text; its value when Foundation holds it as
// a text, a number or a Boolean, an invalid value otherwise.
struct DictionaryEntry
{
    std::optional<QString> key;
    QVariant value;

    friend bool operator==(const DictionaryEntry&, const DictionaryEntry&) = default;
};

using DictionaryEntries = QList<DictionaryEntry>;

// The dictionary keyed by text that the entries make, or nothing when a key is not text: such a dictionary
// cannot be read as one keyed by text at all. Values of other kinds are left out.
std::optional<QVariantMap> textKeyedMap(const DictionaryEntries& entries);

// The entries whose keys are text, for dictionaries read only for what they hold (a bundle's information,
// an error's user information); other entries, and values of other kinds, are left out.
QVariantMap textKeyedEntries(const DictionaryEntries& entries);

} // namespace VendelSDK
