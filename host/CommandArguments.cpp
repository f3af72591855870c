// Parses as getopt_long does with permutation, but refuses rather than guesses: no abbreviations, no
// clustered short options.
#include "CommandArguments.h"

namespace VendelHost {

CommandArguments::CommandArguments(const QStringList& arguments, const QStringList& flags,
                                   const QStringList& valuedOptions)
{
    bool optionsEnded = false;
    for (qsizetype index = 0; index < arguments.size(); ++index) {
        const QString& argument = arguments.at(index);
        if (optionsEnded || argument.size() < 2 || !argument.startsWith(u'-')) {
            m_operands.append(argument);
            continue;
        }
        if (argument == u"--") {
            optionsEnded = true;
            continue;
        }
        const qsizetype equals = argument.indexOf(u'=');
        const QString name = equals < 0 ? argument : argument.left(equals);
        QString value;
        if (flags.contains(name) && equals < 0) {
            // A flag has no value; it is kept as present.
        } else if (valuedOptions.contains(name)) {
            if (equals >= 0) {
                value = argument.mid(equals + 1);
            } else if (index + 1 < arguments.size()) {
                value = arguments.at(++index);
            } else {
                throw Error{QStringLiteral("the option %1 needs a value.").arg(name)};
            }
        } else if (flags.contains(name)) {
            throw Error{QStringLiteral("the option %1 takes no value.").arg(name)};
        } else {
            throw Error{QStringLiteral("unknown option \"%1\"; put -- before an operand that begins with "
                                       "a dash.")
                            .arg(argument)};
        }
        if (m_options.contains(name)) {
            throw Error{QStringLiteral("the option %1 is given twice.").arg(name)};
        }
        m_options.insert(name, value);
    }
}

std::optional<QString> CommandArguments::value(const QString& option) const
{
    const auto found = m_options.constFind(option);
    return found == m_options.constEnd() ? std::nullopt : std::optional<QString>(*found);
}

} // namespace VendelHost
