#include "Typloom/Formats/Plist.h"

#include "Typloom/Formats/Numbers.h"

namespace {

/// The element children of a node, without comments and stray text.
pugi::xml_node firstElement(pugi::xml_node node)
{
    return node.find_child([](pugi::xml_node child) { return child.type() == pugi::node_element; });
}

pugi::xml_node nextElement(pugi::xml_node node)
{
    do {
        node = node.next_sibling();
    } while (node && node.type() != pugi::node_element);
    return node;
}

/// All of it: comments and CDATA sections make pieces of a text.
std::string textOf(pugi::xml_node node)
{
    std::string text;
    for (auto const piece : node.children()) {
        text += piece.value(); // An element has none.
    }
    return text;
}

class PlistReader {
public:
    explicit PlistReader(XmlDocument const& document)
        : m_document(document)
    {
    }
    std::optional<FormatError> error;

    void read(pugi::xml_node node, int depth, PlistValue& value)
    {
        std::string_view const kind = node.name();
        if (depth > plistDepthLimit) {
            fail(node, "its property list is nested too deeply");
        } else if (kind == "dict") {
            readDictionary(node, depth, value.content.emplace<PlistValue::Dictionary>());
        } else if (kind == "array") {
            readArray(node, depth, value.content.emplace<PlistValue::Array>());
        } else if (kind == "string") {
            value.content = textOf(node);
        } else if (kind == "integer" || kind == "real") {
            readNumber(node, value);
        } else if (kind == "true" || kind == "false") {
            value.content = kind == "true";
        } else if (kind != "date" && kind != "data") {
            fail(node, "<" + std::string(kind) + "> is no value of a property list");
        }
    }

private:
    void readDictionary(pugi::xml_node node, int depth, PlistValue::Dictionary& entries)
    {
        for (auto key = firstElement(node); key && !error; key = nextElement(key)) {
            auto const value = nextElement(key);
            if (std::string_view(key.name()) != "key" || !value) {
                return fail(key, "its property list has no key and value in turn");
            }
            auto const [entry, isNew] = entries.try_emplace(textOf(key));
            PlistValue repeated;
            read(value, depth + 1, isNew ? entry->second : repeated);
            key = value;
        }
    }

    void readArray(pugi::xml_node node, int depth, PlistValue::Array& values)
    {
        for (auto value = firstElement(node); value && !error; value = nextElement(value)) {
            read(value, depth + 1, values.emplace_back());
        }
    }

    static void readNumber(pugi::xml_node node, PlistValue& value)
    {
        auto const whole = textOf(node);
        std::string_view text = whole;
        auto const first = text.find_first_not_of(" \t\r\n");
        text = first == std::string_view::npos ? std::string_view {} : text.substr(first);
        text = text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
        if (auto const number = parseNumber(text)) {
            value.content = *number;
        } else {
            value.content = std::string(text);
        }
    }

    void fail(pugi::xml_node node, std::string reason)
    {
        if (!error) {
            error = m_document.errorAt(node, std::move(reason));
        }
    }

    XmlDocument const& m_document;
};

} // namespace

std::optional<double> PlistValue::number() const
{
    auto const* number = std::get_if<double>(&content);
    return number ? std::optional(*number) : std::nullopt;
}

PlistValue const* PlistValue::find(std::string_view key) const
{
    auto const* entries = dictionary();
    if (!entries) {
        return nullptr;
    }
    auto const entry = entries->find(key);
    return entry == entries->end() ? nullptr : &entry->second;
}

Result<PlistValue> readPlistValue(XmlDocument const& document, pugi::xml_node node)
{
    PlistReader reader(document);
    Result<PlistValue> result { PlistValue {} };
    reader.read(node, 1, *result);
    if (reader.error) {
        return std::move(*reader.error);
    }
    return result;
}

Result<PlistValue> readPlist(XmlDocument const& document)
{
    auto const root = document.root();
    auto const value = firstElement(root);
    if (std::string_view(root.name()) != "plist" || !value) {
        return document.errorAt(root, "it is not a property list");
    }
    return readPlistValue(document, value);
}
