// JSON, read as a stream of events so that a long history needs no tree in memory and errors know their line.
#include "Fields.h"

#include <nlohmann/json.hpp>

#include <istream>
#include <iterator>
#include <ostream>

namespace zelk {
namespace {

constexpr const char *formatName = "netinfo-history";
constexpr std::int64_t formatVersion = 1;

// Where the parser is.
struct Position {
    std::uint64_t line = 1;
    bool behindLineFeed = false; ///< The last byte consumed was one.
};

// Iterates over the input's bytes and counts the lines as the parser consumes them.
class CountingIterator
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char *;
    using reference = char;

    CountingIterator() = default;
    CountingIterator(std::istream &input, Position &position) : m_bytes(input), m_position(&position) {}

    char operator*() const { return *m_bytes; }
    CountingIterator &operator++()
    {
        m_position->behindLineFeed = *m_bytes == '\n';
        m_position->line += m_position->behindLineFeed ? 1 : 0;
        ++m_bytes;
        return *this;
    }
    CountingIterator operator++(int)
    {
        CountingIterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const CountingIterator &other) const { return m_bytes == other.m_bytes; }
    bool operator!=(const CountingIterator &other) const { return !(*this == other); }

private:
    std::istreambuf_iterator<char> m_bytes;
    Position *m_position = nullptr;
};

// Takes the parser's events for { "format": ..., "version": ..., "records": [ {...}, ... ] }, in any order.
class RecordEvents : public nlohmann::json_sax<nlohmann::json>
{
public:
    RecordEvents(const ImportOptions &options, const Position &position, Source &source)
        : m_options(options), m_position(position), m_source(source)
    {
    }

    bool null() override { fail(what() + " must not be null"); }
    bool boolean(bool) override { fail(what() + " must not be true or false"); }
    bool binary(binary_t &) override { fail(what() + " must not be binary"); }
    bool number_float(number_float_t, const string_t &text) override
    {
        m_atNumber = true;
        fail(what() + " is " + text + "; it must be a whole number within reason");
    }
    bool number_integer(number_integer_t value) override { return number(value); }
    bool number_unsigned(number_unsigned_t value) override
    {
        if (value > static_cast<number_unsigned_t>(std::numeric_limits<std::int64_t>::max()))
            number_float(0, std::to_string(value));
        return number(static_cast<std::int64_t>(value));
    }

    bool string(string_t &value) override
    {
        if (m_level == Level::Record) {
            if (isNumber(m_field))
                fail(what() + " must be a number, without quotation marks");
            if (const auto wrong = setText(m_record, m_field, value))
                fail(what() + ' ' + *wrong);
            return true;
        }
        if (m_level != Level::File || m_member != "format")
            fail(unexpected("a text"));
        if (value != formatName)
            fail("the format is \"" + value + "\"; only \"" + formatName + "\" can be imported");
        m_formatSeen = true;
        return true;
    }

    bool start_object(std::size_t) override
    {
        if (m_level == Level::Outside) {
            m_level = Level::File;
        } else if (m_level == Level::Records) {
            m_level = Level::Record;
            m_record = Record();
            m_present.reset();
            m_begin = m_position.line;
        } else {
            fail(unexpected("an object"));
        }
        return true;
    }

    bool key(string_t &name) override
    {
        if (m_level == Level::File)
            return fileKey(name);
        const auto field = fieldNamed(name);
        if (!field)
            fail("the member \"" + name + "\" is not known");
        if (m_present[indexOf(*field)])
            fail("the member \"" + name + "\" comes twice");
        m_present.set(indexOf(*field));
        m_field = *field;
        return true;
    }

    bool end_object() override
    {
        if (m_level == Level::File) {
            m_level = Level::Outside;
            if (!m_formatSeen || !m_versionSeen || !m_recordsSeen)
                fail("the object lacks \"format\", \"version\" or \"records\"; is it a history?");
            return true;
        }
        const std::string missing = missingNames(m_present);
        if (!missing.empty())
            failAt(m_options, m_begin, "the record lacks " + missing);
        completeRecord(m_record, m_present, "json");
        append(m_source, std::move(m_record), m_begin, m_options);
        m_level = Level::Records;
        return true;
    }

    bool start_array(std::size_t) override
    {
        if (m_level != Level::File || m_member != "records")
            fail(unexpected("an array"));
        m_level = Level::Records;
        m_recordsSeen = true;
        return true;
    }

    bool end_array() override
    {
        m_level = Level::File;
        return true;
    }

    bool parse_error(std::size_t, const std::string &, const nlohmann::detail::exception &error) override
    {
        std::string text = error.what();
        const auto column = text.find("column ");
        const auto colon = text.find(": ", column == std::string::npos ? 0 : column);
        if (colon != std::string::npos)
            text.erase(0, colon + 2);
        fail("this is not valid JSON: " + text);
    }

private:
    enum class Level { Outside, File, Records, Record };

    [[noreturn]] void fail(const std::string &message) const
    {
        // The parser sees that a number has ended by the byte behind it.
        const bool lineBefore = m_atNumber && m_position.behindLineFeed;
        failAt(m_options, m_position.line - (lineBefore ? 1 : 0), message);
    }

    // The member whose value is being read, as messages name it.
    std::string what() const
    {
        if (m_level == Level::Record)
            return nameOf(m_field);
        return m_level == Level::File ? m_member : "the value";
    }

    std::string unexpected(const std::string &kind) const
    {
        if (m_level == Level::Outside)
            return "the file must hold one object with \"format\", \"version\" and \"records\"";
        if (m_level == Level::Records)
            return "\"records\" may hold objects only";
        return what() + " must not be " + kind;
    }

    bool number(std::int64_t value)
    {
        m_atNumber = true;
        if (m_level == Level::Record) {
            if (!isNumber(m_field))
                fail(what() + " must be a text in quotation marks");
            setNumber(m_record, m_field, value);
            m_atNumber = false;
            return true;
        }
        if (m_level != Level::File || m_member != "version")
            fail(unexpected("a number"));
        if (value != formatVersion)
            fail("the file has version " + std::to_string(value) + " of the format; this program reads version " +
                 std::to_string(formatVersion) + ", so use a newer one");
        m_versionSeen = true;
        m_atNumber = false;
        return true;
    }

    bool fileKey(const std::string &name)
    {
        const bool seen = (name == "format" && m_formatSeen) || (name == "version" && m_versionSeen) ||
                          (name == "records" && m_recordsSeen);
        if (seen)
            fail("the member \"" + name + "\" comes twice");
        if (name != "format" && name != "version" && name != "records")
            fail("the member \"" + name + "\" is not known; is this an exported history?");
        m_member = name;
        return true;
    }

    const ImportOptions &m_options;
    const Position &m_position;
    bool m_atNumber = false;
    Source &m_source;
    Level m_level = Level::Outside;
    std::string m_member;
    bool m_formatSeen = false;
    bool m_versionSeen = false;
    bool m_recordsSeen = false;
    Field m_field = Field::Profile;
    FieldSet m_present;
    Record m_record;
    std::uint64_t m_begin = 0;
};

} // namespace

Source readJson(std::istream &input, const ImportOptions &options)
{
    Source source;
    Position position;
    RecordEvents events(options, position, source);
    nlohmann::json::sax_parse(CountingIterator(input, position), CountingIterator(), &events);
    return source;
}

void writeJson(std::ostream &output, const std::vector<Record> &records)
{
    output << "{\n  \"format\": \"" << formatName << "\",\n  \"version\": " << formatVersion << ",\n  \"records\": [";
    const char *separator = "\n    ";
    for (const Record &record : records) {
        nlohmann::ordered_json members;
        for (std::size_t i = 0; i < fieldCount; ++i) {
            const auto field = static_cast<Field>(i);
            if (isNumber(field))
                members[nameOf(field)] = numberOf(record, field);
            else
                members[nameOf(field)] = textOf(record, field);
        }
        output << separator << members.dump();
        separator = ",\n    ";
    }
    output << (records.empty() ? "]\n}\n" : "\n  ]\n}\n");
}

} // namespace zelk
