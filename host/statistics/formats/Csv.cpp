// CSV as RFC 4180 has it: a header line that names the columns in any order, quotation marks doubled inside quoted
// fields, line breaks allowed there. Texts that a spreadsheet would run as a formula are guarded by an apostrophe.
#include "Fields.h"
#include "LineReader.h"

#include <csv.h>

#include <deque>
#include <memory>
#include <ostream>
#include <string_view>

namespace zelk {
namespace {

constexpr char guard = '\'';
constexpr std::size_t maximumRow = LineReader::maximum;

// Spreadsheets run a cell as a formula when it begins with one of these, some also behind blanks and in full width. The
// guard itself is among them, so that a text that begins with one keeps it.
bool needsGuard(std::string_view text)
{
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return false;
    text.remove_prefix(first);
    for (const std::string_view wide : {"\uFF1D", "\uFF0B", "\uFF0D", "\uFF20"})
        if (text.substr(0, wide.size()) == wide)
            return true;
    return std::string_view("=+-@\t\r\n'").find(text.front()) != std::string_view::npos;
}

std::string guarded(const std::string &text)
{
    return needsGuard(text) ? guard + text : text;
}

std::string unguarded(const std::string &text)
{
    if (!text.empty() && text.front() == guard && needsGuard(std::string_view(text).substr(1)))
        return text.substr(1);
    return text;
}

void appendCell(std::string &row, const std::string &text)
{
    const bool outerBlank = !text.empty() && (text.front() == ' ' || text.back() == ' ');
    if (!outerBlank && text.find_first_of(",\"\r\n") == std::string::npos) {
        row += text;
        return;
    }
    row += '"';
    for (const char letter : text)
        row.append(letter == '"' ? 2 : 1, letter);
    row += '"';
}

using Row = std::vector<std::string>;

struct NumberedRow {
    Row cells;
    std::uint64_t line = 0; ///< On which it begins; quoted cells may span several.
};

// Rows from libcsv, which is fed line by line so that every row knows where it began.
class CsvRows
{
public:
    CsvRows(std::istream &input, const ImportOptions &options) : m_lines(input, options), m_options(options)
    {
        if (csv_init(&m_parser, CSV_STRICT | CSV_STRICT_FINI) != 0)
            throw HistoryError(ResultCode::Failed, "The CSV parser could not be started.");
        // Blanks around a text belong to it.
        csv_set_space_func(&m_parser, [](unsigned char) { return 0; });
    }
    ~CsvRows() { csv_free(&m_parser); }
    CsvRows(const CsvRows &) = delete;
    CsvRows &operator=(const CsvRows &) = delete;

    bool next(NumberedRow &row)
    {
        while (m_done.empty() && !m_ended)
            feed();
        if (m_done.empty())
            return false;
        row = std::move(m_done.front());
        m_done.pop_front();
        return true;
    }

private:
    void feed()
    {
        if (!m_lines.next()) {
            finish();
            return;
        }
        const std::string &text = m_lines.text();
        if (!m_open) {
            m_begin = m_lines.number();
            m_size = 0;
        }
        m_size += text.size();
        if (m_size > maximumRow)
            failAt(m_options, m_begin, "the row is too long; a closing quotation mark seems to be missing");
        const std::size_t before = m_done.size();
        check(csv_parse(&m_parser, text.data(), text.size(), cellDone, rowDone, this) == text.size());
        const bool blank = text.find_first_not_of("\r\n") == std::string::npos;
        m_open = m_done.size() == before && (m_open || !blank);
    }

    void finish()
    {
        m_ended = true;
        if (csv_fini(&m_parser, cellDone, rowDone, this) != 0)
            failAt(m_options, m_begin, "the input ends inside a quoted text; is the file complete?");
    }

    void check(bool whole)
    {
        if (whole)
            return;
        if (csv_error(&m_parser) == CSV_EPARSE)
            failAt(m_options, m_lines.number(),
                   "a quotation mark is out of place; put the whole text in quotation marks and double those inside");
        throw HistoryError(ResultCode::Failed, "Not enough memory to read the CSV input.");
    }

    // The parser is C code, through which no exception may pass; these two throw none short of lack of memory.
    static void cellDone(void *text, size_t length, void *self)
    {
        static_cast<CsvRows *>(self)->m_row.emplace_back(static_cast<const char *>(text), length);
    }
    static void rowDone(int, void *self)
    {
        auto *rows = static_cast<CsvRows *>(self);
        rows->m_done.push_back({std::move(rows->m_row), rows->m_begin});
        rows->m_row.clear();
    }

    LineReader m_lines;
    const ImportOptions &m_options;
    csv_parser m_parser = {};
    Row m_row;
    std::deque<NumberedRow> m_done;
    std::uint64_t m_begin = 0;
    std::size_t m_size = 0;
    bool m_open = false; ///< A row has begun and goes on with the next line.
    bool m_ended = false;
};

std::string unknownColumn(const std::string &name)
{
    std::string message = "the column \"" + name + "\" is not known; columns are";
    for (const std::string &known : fieldNames())
        message += (&known == fieldNames().data() ? " " : ", ") + known;
    if (name.find(';') != std::string::npos)
        message += " (they are separated by commas, not by semicolons)";
    return message;
}

std::vector<Field> readHeader(const NumberedRow &header, const ImportOptions &options, FieldSet &present)
{
    std::vector<Field> columns;
    for (const std::string &name : header.cells) {
        const auto field = fieldNamed(name);
        if (!field)
            failAt(options, header.line, unknownColumn(name));
        if (present[indexOf(*field)])
            failAt(options, header.line, "the column \"" + name + "\" comes twice");
        present.set(indexOf(*field));
        columns.push_back(*field);
    }
    const std::string missing = missingNames(present);
    if (!missing.empty())
        failAt(options, header.line, "the header line lacks " + missing);
    return columns;
}

Record readRow(const NumberedRow &row, const std::vector<Field> &columns, const ImportOptions &options)
{
    if (row.cells.size() != columns.size())
        failAt(options, row.line,
               "the row has " + std::to_string(row.cells.size()) + " fields where the header has " +
                   std::to_string(columns.size()) + "; a text with a comma needs quotation marks");
    Record record;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string &cell = row.cells[i];
        if (const auto wrong = setText(record, columns[i], isText(columns[i]) ? unguarded(cell) : cell))
            failAt(options, row.line, nameOf(columns[i]) + ' ' + *wrong);
    }
    return record;
}

} // namespace

Source readCsv(std::istream &input, const ImportOptions &options)
{
    CsvRows rows(input, options);
    NumberedRow row;
    if (!rows.next(row))
        failAt(options, 1, "the input is empty; a CSV file begins with a header line");
    FieldSet present;
    const std::vector<Field> columns = readHeader(row, options, present);
    Source source;
    while (rows.next(row)) {
        Record record = readRow(row, columns, options);
        completeRecord(record, present, "csv");
        append(source, std::move(record), row.line, options);
    }
    return source;
}

void writeCsv(std::ostream &output, const std::vector<Record> &records)
{
    std::string row;
    for (const std::string &name : fieldNames())
        row += (row.empty() ? "" : ",") + name;
    output << row << "\r\n";
    for (const Record &record : records) {
        row.clear();
        for (std::size_t i = 0; i < fieldCount; ++i) {
            const auto field = static_cast<Field>(i);
            const std::string text = textOf(record, field);
            row.append(i == 0 ? "" : ",");
            appendCell(row, isText(field) ? guarded(text) : text);
        }
        output << row << "\r\n";
    }
}

} // namespace zelk
