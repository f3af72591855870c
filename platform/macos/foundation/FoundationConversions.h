// Conversions between Qt's and Foundation's values, for the Objective-C++ backends only.
#pragma once

#import <Foundation/Foundation.h>

#include "DictionaryEntries.h"

#include <QString>
#include <QVariantMap>

#include <optional>

NS_ASSUME_NONNULL_BEGIN

namespace VendelSDK {

// Through UTF-8, so that the same code builds against every Foundation, not only Apple's.
NSString* toNSString(const QString& text);
QString toQString(NSString* _Nullable text);
std::optional<QString> toOptionalQString(NSString* _Nullable text);

// Every entry, whatever its key: whether a dictionary is keyed by text is for its reader to decide.
DictionaryEntries toDictionaryEntries(NSDictionary* _Nullable dictionary);
// Texts, Booleans and numbers; any other value is left out. Entries whose key is not text are left out.
QVariantMap toQVariantMap(NSDictionary* _Nullable dictionary);
NSDictionary<NSString*, id>* toNSDictionary(const QVariantMap& map);

} // namespace VendelSDK

NS_ASSUME_NONNULL_END
