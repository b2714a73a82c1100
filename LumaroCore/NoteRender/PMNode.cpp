// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/NoteRender/PMNode.h"

#include "LumaroCore/Support/EnumNames.h"

namespace lumaro {
namespace {

PMMark plainMark(PMMark::Kind kind) {
    return {.type = std::string{nameOf(kind)}, .attrs = std::nullopt};
}

PMNode container(PMNode::Kind kind, std::vector<PMNode> content) {
    PMNode node;
    node.type = nameOf(kind);
    node.content = std::move(content);
    return node;
}

void appendPlainText(const PMNode& node, std::string& out) {
    const auto kind = node.kind();
    if (kind == PMNode::Kind::text) {
        if (node.text) out += *node.text;
        return;
    }
    if (!node.content) return;
    bool first = true;
    for (const auto& child : *node.content) {
        if (kind == PMNode::Kind::doc && !std::exchange(first, false)) out += '\n';
        appendPlainText(child, out);
    }
}

} // namespace

std::optional<PMMark::Kind> PMMark::kind() const {
    return fromName<Kind>(type);
}

const std::string* PMMark::colorHex() const {
    if (kind() != Kind::textColor || !attrs) return nullptr;
    const auto color = attrs->find("color");
    return color == attrs->end() ? nullptr : color->second.stringValue();
}

std::optional<PMNode::Kind> PMNode::kind() const {
    return fromName<Kind>(type);
}

std::string PMNode::plainText() const {
    std::string out;
    appendPlainText(*this, out);
    return out;
}

namespace pm {

PMNode text(std::string characters, std::optional<std::vector<PMMark>> marks) {
    PMNode node;
    node.type = nameOf(PMNode::Kind::text);
    node.text = std::move(characters);
    node.marks = std::move(marks);
    return node;
}

PMNode paragraph(std::vector<PMNode> content) {
    return container(PMNode::Kind::paragraph, std::move(content));
}

PMNode doc(std::vector<PMNode> content) {
    return container(PMNode::Kind::doc, std::move(content));
}

const PMNode& emptyDoc() {
    static const PMNode empty = doc({paragraph({})});
    return empty;
}

PMNode docOfLines(std::string_view lines) {
    std::vector<PMNode> paragraphs;
    for (std::size_t start = 0; start <= lines.size();) {
        const auto end = std::min(lines.find('\n', start), lines.size());
        std::vector<PMNode> content;
        if (end > start) content.push_back(text(std::string{lines.substr(start, end - start)}));
        paragraphs.push_back(paragraph(std::move(content)));
        start = end + 1;
    }
    return doc(std::move(paragraphs));
}

PMMark bold() {
    return plainMark(PMMark::Kind::bold);
}
PMMark italic() {
    return plainMark(PMMark::Kind::italic);
}
PMMark underline() {
    return plainMark(PMMark::Kind::underline);
}
PMMark strike() {
    return plainMark(PMMark::Kind::strike);
}
PMMark textColor(std::string color) {
    auto mark = plainMark(PMMark::Kind::textColor);
    mark.attrs = PMAttributes{{"color", PMValue{std::move(color)}}};
    return mark;
}

} // namespace pm
} // namespace lumaro
