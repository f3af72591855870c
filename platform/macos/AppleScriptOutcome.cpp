// Kept apart from the Objective-C++ engine so that these rules are tested wherever the project builds.
#include "AppleScriptOutcome.h"

#include <cmath>
#include <limits>

namespace VendelSDK {

namespace {

// A number counts as an integer when it is one exactly, as a bridged Foundation number would.
std::optional<qint64> integerValue(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::Long:
        return value.toLongLong();
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::UShort:
    case QMetaType::ULong:
        if (value.toULongLong() > quint64(std::numeric_limits<qint64>::max())) {
            return std::nullopt;
        }
        return value.toLongLong();
    case QMetaType::Double:
    case QMetaType::Float: {
        const double number = value.toDouble();
        // 2^63 itself is out of range, so the upper bound is exclusive.
        constexpr double limit = 9223372036854775808.0;
        if (!std::isfinite(number) || std::trunc(number) != number || number < -limit || number >= limit) {
            return std::nullopt;
        }
        return qint64(number);
    }
    default:
        return std::nullopt;
    }
}

std::optional<QString> textValue(const QVariantMap& map, const char* key)
{
    const QVariant value = map.value(QString::fromLatin1(key));
    if (value.typeId() != QMetaType::QString) {
        return std::nullopt;
    }
    return value.toString();
}

} // namespace

ScriptErrorRecord appleScriptErrorRecord(const QVariantMap& errorInfo)
{
    return ScriptErrorRecord{integerValue(errorInfo.value(QString::fromLatin1(appleScriptErrorNumberKey))),
                             textValue(errorInfo, appleScriptErrorMessageKey),
                             textValue(errorInfo, appleScriptErrorBriefMessageKey)};
}

ScriptOutcome appleScriptOutcome(const AppleScriptExecution& execution)
{
    if (!execution.scriptCreated) {
        return ScriptNoResult{};
    }
    if (execution.errorInfo) {
        const std::optional<QVariantMap> errorInfo = textKeyedMap(*execution.errorInfo);
        if (!errorInfo) {
            ScriptErrorRecord unreadable;
            unreadable.keyedByText = false;
            return unreadable;
        }
        return appleScriptErrorRecord(*errorInfo);
    }
    if (execution.resultText) {
        return *execution.resultText;
    }
    return ScriptNoResult{};
}

} // namespace VendelSDK
