// Any bytes as the user's own list of games that need something special: nothing may crash, and no pattern in it, tried
// on any title, may hold the program up.

#include "FuzzCheck.h"
#include "Host/IcuPattern.h"
#include "Services/Dos/GameException.h"

using namespace ludarium;
using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QList<QByteArray> files = filesOf(data, size);
    const auto exceptions = GameException::listFromJson(files.value(0));
    if (!exceptions)
        return 0;
    QStringList titles{u"Space Quest III"_s, u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab"_s, QString()};
    for (const QByteArray &line : files.value(1).split('\n'))
        titles.append(QString::fromUtf8(line));
    for (const GameException &exception : *exceptions) {
        check(exceptionSeverityFromText(exceptionSeverityText(exception.severity)) == exception.severity);
        check(!exception.emulator ||
              emulatorOverrideFromText(emulatorOverrideText(*exception.emulator)) == exception.emulator);
        check(exception.addedDate.isValid());
        for (const QString &text : exception.patterns)
            if (const auto pattern = IcuPattern::compile(text, IcuPattern::Case::Insensitive))
                for (const QString &title : std::as_const(titles))
                    if (const auto match = pattern->find(title)) {
                        check(match->start >= 0 && match->length >= 0 && match->start + match->length <= title.size());
                        check(match->groups.value(0) == title.sliced(match->start, match->length));
                        pattern->replaceAll(title, u"-"_s);
                    }
    }
    return 0;
}
