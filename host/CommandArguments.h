// One command's arguments split into options and operands: "--" ends the options, and an option the command
// does not take is a wrong command line, never an operand.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace VendelHost {

class CommandArguments
{
public:
    // A wrong command line, as a sentence for the person who typed it.
    struct Error
    {
        QString message;
    };

    // Flags stand alone; valued options take the next argument, or the text after "=". Options may come
    // before, between or after the operands, until "--"; every argument after it is an operand, and so is
    // "-" alone. Throws Error for an unknown option, a missing value, or an option given twice.
    CommandArguments(const QStringList& arguments, const QStringList& flags,
                     const QStringList& valuedOptions = {});

    bool has(const QString& flag) const { return m_options.contains(flag); }
    std::optional<QString> value(const QString& option) const;
    const QStringList& operands() const { return m_operands; }

private:
    QHash<QString, QString> m_options;
    QStringList m_operands;
};

} // namespace VendelHost
