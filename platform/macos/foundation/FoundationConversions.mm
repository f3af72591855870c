// Foundation's numbers say what they hold through their Objective-C type encoding; a dictionary's keys are
// reported as they are, text or not.
#include "FoundationConversions.h"

#include <cstring>

namespace VendelSDK {

namespace {

bool isFloatingPoint(NSNumber* number)
{
    const char* type = number.objCType;
    return std::strcmp(type, @encode(double)) == 0 || std::strcmp(type, @encode(float)) == 0;
}

bool isUnsignedLongLong(NSNumber* number)
{
    return std::strcmp(number.objCType, @encode(unsigned long long)) == 0;
}

QVariant toQVariant(id value)
{
    if ([value isKindOfClass:[NSString class]]) {
        return toQString(static_cast<NSString*>(value));
    }
    if ([value isKindOfClass:[NSNumber class]]) {
        NSNumber* number = static_cast<NSNumber*>(value);
        if (isFloatingPoint(number)) {
            return number.doubleValue;
        }
        if (isUnsignedLongLong(number)) {
            return QVariant::fromValue<qulonglong>(number.unsignedLongLongValue);
        }
        return QVariant::fromValue<qlonglong>(number.longLongValue);
    }
    return {};
}

id toFoundationValue(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return toNSString(value.toString());
    case QMetaType::Bool:
        return [NSNumber numberWithBool:value.toBool()];
    case QMetaType::Double:
        return [NSNumber numberWithDouble:value.toDouble()];
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return [NSNumber numberWithUnsignedLongLong:value.toULongLong()];
    case QMetaType::Int:
    case QMetaType::LongLong:
        return [NSNumber numberWithLongLong:value.toLongLong()];
    default:
        return nil;
    }
}

} // namespace

NSString* toNSString(const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    NSString* converted = [[NSString alloc] initWithBytes:utf8.constData()
                                                   length:NSUInteger(utf8.size())
                                                 encoding:NSUTF8StringEncoding];
    return converted != nil ? converted : @"";
}

QString toQString(NSString* _Nullable text)
{
    if (text == nil) {
        return {};
    }
    const char* utf8 = text.UTF8String;
    return utf8 != nullptr ? QString::fromUtf8(utf8) : QString();
}

std::optional<QString> toOptionalQString(NSString* _Nullable text)
{
    if (text == nil) {
        return std::nullopt;
    }
    return toQString(text);
}

DictionaryEntries toDictionaryEntries(NSDictionary* _Nullable dictionary)
{
    DictionaryEntries entries;
    for (id key in dictionary) {
        DictionaryEntry entry;
        if ([key isKindOfClass:[NSString class]]) {
            entry.key = toQString(static_cast<NSString*>(key));
        }
        entry.value = toQVariant([dictionary objectForKey:key]);
        entries.append(entry);
    }
    return entries;
}

QVariantMap toQVariantMap(NSDictionary* _Nullable dictionary)
{
    return textKeyedEntries(toDictionaryEntries(dictionary));
}

NSDictionary<NSString*, id>* toNSDictionary(const QVariantMap& map)
{
    NSMutableDictionary<NSString*, id>* dictionary =
        [NSMutableDictionary dictionaryWithCapacity:NSUInteger(map.size())];
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        id value = toFoundationValue(entry.value());
        if (value != nil) {
            [dictionary setObject:value forKey:toNSString(entry.key())];
        }
    }
    return dictionary;
}

} // namespace VendelSDK
