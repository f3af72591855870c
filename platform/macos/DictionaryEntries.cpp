// Kept apart from the Objective-C++ conversions so that these rules are tested wherever the project builds.
#include "DictionaryEntries.h"

#include <algorithm>

namespace VendelSDK {

std::optional<QVariantMap> textKeyedMap(const DictionaryEntries& entries)
{
    const bool allKeysText =
        std::all_of(entries.cbegin(), entries.cend(), [](const DictionaryEntry& entry) { return entry.key; });
    if (!allKeysText) {
        return std::nullopt;
    }
    return textKeyedEntries(entries);
}

QVariantMap textKeyedEntries(const DictionaryEntries& entries)
{
    QVariantMap map;
    for (const DictionaryEntry& entry : entries) {
        if (entry.key && entry.value.isValid()) {
            map.insert(*entry.key, entry.value);
        }
    }
    return map;
}

} // namespace VendelSDK
