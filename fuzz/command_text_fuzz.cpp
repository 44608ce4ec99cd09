// Feeds bytes to the service's reading of a command text: the lines and fields of the file
// and the policy's judgement of each, paths and keys included. Nothing may crash, and a line
// the policy lets through must name a known command with its number of fields.
#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "core/BasicText.h"
#include "service/CommandPolicy.h"
#include "service/Commands.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const service::CommandPolicy policy(
        {"C:\\ProgramData\\Tallowick\\", "C:\\Program Files\\Tallowick", {"C:\\Temp"}});
    const QString text = QString::fromLatin1(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const QString& line : core::split(text, QStringLiteral("\r\n"))) {
        const QStringList fields = line.split(u'|');
        if (policy.refusal(fields).isEmpty()) {
            const auto shape = service::commandShape(fields.value(0));
            if (!shape || fields.size() != shape->fields) {
                std::abort();
            }
        }
    }
    return 0;
}
