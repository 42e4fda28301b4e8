#pragma once

#include <QString>

#include <cstdint>
#include <vector>

/// The values of a property list, each made once however often it is referred to, so that no
/// list takes much more memory than its file.
struct PropertyListDocument {
    enum class Kind : std::uint8_t {
        Other, ///< a number, a date, data: nothing that is asked for
        Text,
        Array,
        Dictionary,
        Broken ///< that cannot be read; the values around it can
    };

    struct Value {
        Kind kind = Kind::Other;
        /// Of a text, its place in `texts`. Of an array, the place of its first item in
        /// `references`; of a dictionary that of its first key. As many values follow the keys.
        std::uint32_t first = 0;
        std::uint32_t count = 0; ///< items, or keys
    };
    struct Text {
        QString ended; ///< up to its first NUL
        QString whole; ///< null where there is none
    };

    void addText(Value& value, QString text);

    std::vector<Value> values;
    std::vector<std::uint32_t> references;
    std::vector<Text> texts;
    std::uint32_t root = 0;
    bool isList = false; ///< without it there is nothing to be read
    bool hasBroken = false;
};
