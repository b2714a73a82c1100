// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/NoteText.h"

#include "DesignSystem/Fonts.h"

#include "LumaroCore/Support/Wire.h"
#include "Samples/Samples.h"
#include "Widgets/Items/Emoji.h"
#include "Widgets/Items/NoteLinks.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

#include <gtest/gtest.h>

namespace lumaro {
namespace {

using samples::chance;
using samples::pick;
using samples::Random;

PMNode nodeOf(const std::string& json) {
    return Wire::decode<PMNode>(json).value();
}

std::string jsonOf(const PMNode& node) {
    return *Wire::encode(node);
}

/// A document that people have open.
struct OpenNote {
    explicit OpenNote(PMNode note) : original(std::move(note)) { fillDocument(document, original, {}); }
    explicit OpenNote(const std::string& json) : OpenNote(nodeOf(json)) {}

    QTextCursor at(int start, int end) {
        QTextCursor cursor{&document};
        cursor.setPosition(start);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        return cursor;
    }
    std::string json() const { return jsonOf(documentNode(document, original)); }

    PMNode original;
    QTextDocument document;
};

std::string paragraph(const std::string& content) {
    return R"({"type":"paragraph","content":[)" + content + "]}";
}

std::string doc(const std::string& content) {
    return R"({"type":"doc","content":[)" + content + "]}";
}

PMNode anyNode(Random& random, int depth) {
    static const std::array types{"doc", "paragraph", "text", "heading", "mention", ""};
    static const std::array texts{"",
                                  "a",
                                  "two words",
                                  "👩‍👩‍👧 ☀️",
                                  "a\u2028b",
                                  "a\nb\r\n",
                                  "שלום",
                                  "\u2029",
                                  "\ufdd0\ufffc",
                                  "x\u00a0y "};
    static const std::array marks{"bold", "italic", "underline", "strike", "textColor", "glow"};
    PMNode node;
    node.type = types[pick<std::size_t>(random, 0, types.size() - 1)];
    if (chance(random, 0.6)) node.text = texts[pick<std::size_t>(random, 0, texts.size() - 1)];
    if (chance(random, 0.2)) node.attrs = PMAttributes{{"align", PMValue{std::string{"left"}}}, {"n", PMValue{}}};
    if (chance(random, 0.5)) node.marks.emplace();
    for (int i = pick(random, 0, 2); node.marks && i > 0; --i) {
        PMMark mark{marks[pick<std::size_t>(random, 0, marks.size() - 1)], std::nullopt};
        if (chance(random, 0.4))
            mark.attrs = PMAttributes{{"color", chance(random, 0.5) ? PMValue{std::string{"#AbC"}} : PMValue{1.5}}};
        node.marks->push_back(std::move(mark));
    }
    if (chance(random, 0.7)) node.content.emplace();
    for (int i = pick(random, 0, 3); node.content && depth > 0 && i > 0; --i) {
        node.content->push_back(anyNode(random, depth - 1));
    }
    return node;
}

TEST(NoteText, WhatNobodyEditedComesBackBitForBit) {
    Random random{7};
    for (int i = 0; i < 4000; ++i) {
        auto note = anyNode(random, 3);
        if (chance(random, 0.8)) note.type = "doc";
        ASSERT_EQ(jsonOf(documentNode(OpenNote{note}.document, note)), jsonOf(note));
    }
}

TEST(NoteText, AnEditChangesItsParagraphAndNoOther) {
    const std::string strange =
        R"({"type":"list","attrs":{"n":null},"content":[{"type":"item","content":[{"type":"text","text":"x"}]}]})";
    const std::string glowing =
        R"({"type":"text","text":"ab","marks":[{"type":"glow","attrs":{"z":[1]}},{"type":"bold"}]})";
    OpenNote note{doc(strange + "," + R"({"type":"paragraph","attrs":{"align":"right"},"content":[)" + glowing + "]}")};
    note.at(3, 3).insertText(QStringLiteral("-"));
    EXPECT_EQ(note.json(),
              doc(strange + "," + R"({"type":"paragraph","attrs":{"align":"right"},"content":[)" +
                  R"({"type":"text","text":"a-b","marks":[{"type":"glow","attrs":{"z":[1]}},{"type":"bold"}]}]})"));
    note.at(0, 0).insertText(QStringLiteral("y"));
    EXPECT_TRUE(note.json().starts_with(
        R"({"type":"doc","content":[{"type":"paragraph","content":[{"type":"text","text":"yx"}]})"));
}

TEST(NoteText, BothHalvesOfASplitParagraphKeepItsAttributes) {
    OpenNote note{
        R"({"type":"doc","attrs":{"v":2},"content":[{"type":"paragraph","attrs":{"dir":"rtl"},"content":[{"type":"text","text":"ab"}]}]})"};
    note.at(1, 1).insertBlock();
    const auto half = [](const char* text) {
        return std::string{R"({"type":"paragraph","attrs":{"dir":"rtl"},"content":[{"type":"text","text":")"} + text +
               R"("}]})";
    };
    EXPECT_EQ(note.json(), R"({"type":"doc","attrs":{"v":2},"content":[)" + half("a") + "," + half("b") + "]}");
}

TEST(NoteText, MarksChangeWherePeopleChangeThem) {
    OpenNote note{doc(paragraph(
        R"({"type":"text","text":"abcd","marks":[{"type":"textColor","attrs":{"color":"plum","x":1}},{"type":"bold","attrs":{"w":7}}]})"))};
    QTextCharFormat change;
    setMark(change, PMMark::Kind::bold, false);
    setMark(change, PMMark::Kind::strike, true);
    note.at(0, 1).mergeCharFormat(change);
    setTextColor(change, QStringLiteral("#B0432e"), {});
    note.at(1, 2).mergeCharFormat(change);
    const std::string plum = R"({"type":"textColor","attrs":{"color":"plum","x":1}})";
    EXPECT_EQ(
        note.json(),
        doc(paragraph(
            R"({"type":"text","text":"a","marks":[)" + plum + R"(,{"type":"strike"}]},)" +
            R"({"type":"text","text":"b","marks":[{"type":"strike"},{"type":"textColor","attrs":{"color":"#B0432e"}}]},)" +
            R"({"type":"text","text":"cd","marks":[)" + plum + R"(,{"type":"bold","attrs":{"w":7}}]})")));
}

TEST(NoteText, MarksThatAreTakenOffAreGone) {
    OpenNote note{doc(paragraph(
        R"({"type":"text","text":"a","marks":[{"type":"italic"},{"type":"textColor","attrs":{"color":"sky"}}]})"))};
    QTextCharFormat change;
    setMark(change, PMMark::Kind::italic, false);
    setTextColor(change, {}, {});
    note.at(0, 1).mergeCharFormat(change);
    EXPECT_EQ(note.json(), doc(paragraph(R"({"type":"text","text":"a"})")));
}

TEST(NoteText, ALoneNodeBecomesADocumentOnceItIsEdited) {
    OpenNote note{R"({"type":"text","text":"a"})"};
    note.at(1, 1).insertText(QStringLiteral("b"));
    EXPECT_EQ(note.json(), doc(paragraph(R"({"type":"text","text":"ab"})")));
}

TEST(NoteText, LinksAreWebAddressesAndNothingElse) {
    const std::pair<const char*, std::vector<const char*>> cases[]{
        {"see https://lumaro.app/a?b=1#c.", {"https://lumaro.app/a?b=1#c"}},
        {"(HTTP://Example.org/x_(y)), and http://b.example!", {"http://example.org/x_(y)", "http://b.example"}},
        {"file:///etc/passwd javascript:alert(1) ftp://x.example www.x.example mailto:a@b.example", {}},
        {"https:// https://? xhttps://a.example", {}},
        {"https://google.com@evil.example/", {"https://google.com@evil.example/"}},
    };
    for (const auto& [text, expected] : cases) {
        std::vector<QString> found;
        for (const auto& link : linksIn(QString::fromUtf8(text))) found.push_back(link.url.toString());
        EXPECT_EQ(found, (std::vector<QString>{expected.begin(), expected.end()})) << text;
    }
    EXPECT_EQ(linksIn(QStringLiteral("http://a.example ").repeated(100)).size(), maxNoteLinks);
    EXPECT_TRUE(linksIn(QStringLiteral("http://a.example/") + QString{5000, u'x'}).empty());
    EXPECT_EQ(placeOf(linksIn(QString::fromUtf8("https://google.com@evil.example:8080/")).front().url),
              QStringLiteral("evil.example:8080"));
    // A Cyrillic letter that looks like an "a".
    EXPECT_EQ(placeOf(linksIn(QString::fromUtf8("https://\u0430pple.com/")).front().url),
              QStringLiteral("xn--pple-43d.com"));
}

TEST(NoteText, ALinkIsUnderlinedWhereItIsReadAndNowhereInTheNote) {
    const auto note = pm::docOfLines("see http://a.example/ now");
    QTextDocument document;
    layForReading(document, note, {}, 400);
    QTextCursor cursor{&document};
    cursor.setPosition(8);
    EXPECT_EQ(cursor.charFormat().anchorHref(), QStringLiteral("http://a.example/"));
    EXPECT_TRUE(cursor.charFormat().fontUnderline());
    EXPECT_EQ(OpenNote{note}.json(), jsonOf(note));
}

TEST(NoteText, JoinedEmojiComeToTheFontTogether) {
    const auto joined = [](const char* text) { return withJoinedEmoji(QString::fromUtf8(text)).toStdString(); };
    EXPECT_EQ(joined("a 🏳️‍🌈 b ❤️‍🔥"), "a 🏳‍🌈 b ❤‍🔥");
    EXPECT_EQ(joined("1️⃣ ☀️ 👩‍👩‍👧"), "1⃣ ☀️ 👩‍👩‍👧");
    const auto caps = keycapsIn(QString::fromUtf8("12 3⃣"));
    EXPECT_EQ(caps, (decltype(caps){{3, 2}}));
    QTextDocument document;
    layForReading(document, pm::docOfLines("x 🏳️‍🌈 1️⃣"), {}, 400);
    EXPECT_EQ(document.toPlainText().toStdString(), "x 🏳‍🌈 1⃣");
    QTextCursor cursor{&document};
    cursor.movePosition(QTextCursor::End);
    EXPECT_EQ(cursor.charFormat().fontFamilies().toStringList(), QStringList{emojiFamily});
}

TEST(NoteText, WhatDoesNotFitAtTheSmallestSizeIsToldOfAndAShortTextIsLarge) {
    const QSizeF box{236, 216};
    std::string text;
    for (int i = 0; i < 400; ++i) text += "lemons ";
    EXPECT_TRUE(overflows(pm::docOfLines(text), box));
    EXPECT_FALSE(overflows(pm::docOfLines("i love you"), box));
    EXPECT_GE(fittedFontSize(pm::docOfLines("i love you"), box), 60);
}

TEST(NoteText, ShrinksToFitAndNeverBelowTheSmallestSize) {
    const QSizeF box{236, 216};
    EXPECT_EQ(fittedFontSize(pm::emptyDoc(), box), largestNoteText);
    double before = largestNoteText;
    for (const int words : {1, 8, 20, 60, 400}) {
        std::string text;
        for (int i = 0; i < words; ++i) text += "lemons ";
        const double size = fittedFontSize(pm::docOfLines(text), box);
        EXPECT_LE(size, before) << words;
        before = size;
    }
    EXPECT_EQ(before, smallestNoteText);
    EXPECT_LT(fittedFontSize(pm::docOfLines("unforgettablecongratulations"), box), largestNoteText);
}

} // namespace
} // namespace lumaro
