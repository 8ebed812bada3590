// Import and export of a history: between the readers and writers of the formats and the store.
#include "HistoryInternal.h"
#include "Source.h"

#include <ostream>

namespace zelk {

ImportResult ConnectionHistory::importRecords(std::istream &input, const ImportOptions &options)
{
    Source source = readSource(input, options);
    ImportResult result;
    result.skipped = std::move(source.skipped);
    d->file.run([&] {
        ImportTransaction transaction(*d);
        std::uint64_t done = 0;
        for (const SourceRecord &entry : source.records) {
            ++(transaction.addUnlessHeld(entry.record) ? result.added : result.alreadyThere);
            if (options.progress)
                options.progress(++done, source.records.size());
        }
        transaction.commit();
    });
    return result;
}

void ConnectionHistory::exportRecords(std::ostream &output, FileFormat format, const Filter &filter) const
{
    // All are read before the first is written: whoever takes the output may be slow, and the file waits for nobody.
    const std::vector<Record> records = list(filter);
    switch (format) {
    case FileFormat::Csv:
        writeCsv(output, records);
        break;
    case FileFormat::Json:
        writeJson(output, records);
        break;
    case FileFormat::Pppd:
        throw HistoryError(ResultCode::Failed, "Nothing can be exported as a log of pppd; use CSV or JSON.");
    }
}

} // namespace zelk
