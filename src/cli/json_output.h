#pragma once

#include "tool_table.h"

#include <string>
#include <string_view>
#include <vector>

namespace qor::cli {

// Writes pretty-printed JSON into a string. Objects and arrays opened as
// "inline" keep their items on one line.
class JsonWriter
{
public:
    explicit JsonWriter(std::string &out) : m_out(out) {}

    void BeginObject(bool inlineItems = false);
    void EndObject();
    void BeginArray(bool inlineItems = false);
    void EndArray();
    void Key(std::string_view name);

    void String(std::string_view utf8);
    void Integer(long long value);
    void Number(float value); // non-finite values become null
    void Bool(bool value);

private:
    struct Level
    {
        bool inlineItems;
        int count;
    };

    void BeforeItem();
    void Close(char bracket);
    void NewLine();

    std::string &m_out;
    std::vector<Level> m_levels;
    bool m_afterKey = false;
};

// The text as a JSON string literal, quotes included. The text must be UTF-8.
std::string JsonQuoted(std::string_view utf8);

// Bytes of unknown encoding (a path, a catalogue's version) as UTF-8: kept
// when valid UTF-8, else decoded from the code page.
std::string BytesToUtf8(std::string_view bytes, int codePage);

// The table as a JSON document (ending in a line break): the table-wide
// values, the file-level arbor and every slot that holds a tool, its
// comment decoded from the file's code page.
std::string TableToJson(const ToolTable &table, std::string_view fileName, int codePage);

} // namespace qor::cli
