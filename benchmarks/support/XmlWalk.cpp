#include "support/XmlWalk.h"

#include "Services/Library/CollectionFile.h"

#include <QDir>
#include <cstring>
#include <libxml/parser.h>

namespace ludarium {

qint64 walkGamesFiles(const QString &collection) {
    qint64 elements = 0;
    const QDir folder(collection + QLatin1String("/Data/Platforms"));
    for (const QString &name : folder.entryList({QStringLiteral("*.xml")}, QDir::Files)) {
        const CollectionFile file(folder.filePath(name));
        XmlPartSource source(file, {0, file.size(), {}, {}});
        xmlSAXHandler handler;
        std::memset(&handler, 0, sizeof handler);
        handler.initialized = XML_SAX2_MAGIC;
        handler.startElementNs = [](void *count, const xmlChar *, const xmlChar *, const xmlChar *, int,
                                    const xmlChar **, int, int, const xmlChar **) { ++*static_cast<qint64 *>(count); };
        handler.endElementNs = [](void *, const xmlChar *, const xmlChar *, const xmlChar *) {};
        handler.characters = [](void *, const xmlChar *, int) {};
        handler.ignorableWhitespace = handler.characters;
        const auto read = [](void *from, char *buffer, int size) {
            int count = 0;
            while (const qint64 more = static_cast<XmlPartSource *>(from)->read(buffer + count, size - count))
                count += int(more);
            return count;
        };
        xmlParserCtxtPtr context =
            xmlCreateIOParserCtxt(&handler, &elements, read, nullptr, &source, XML_CHAR_ENCODING_NONE);
        xmlCtxtUseOptions(context, XML_PARSE_NONET);
        xmlParseDocument(context);
        if (!context->wellFormed)
            qFatal("a generated file is not well-formed");
        xmlFreeParserCtxt(context);
    }
    return elements;
}

} // namespace ludarium
