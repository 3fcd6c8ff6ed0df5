// Music requests from hostile bytes: the first byte splits the input into a rule table (KCSV text)
// and a request record of any length. Whatever arrives, the record is read within its bytes, the
// rules give candidates of at most 259 characters, and loop tags read from the same bytes stay
// within their comments.

#include "music/music_rules.h"
#include "music/stream_tags.h"
#include "settings/kcsv.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t split = data[0] * size / 256;
    const std::string table(reinterpret_cast<const char*>(data + 1), split > 0 ? split - 1 : 0);
    // A copy of exactly the record's bytes, so that reading past them is caught.
    const std::vector<std::uint8_t> record(data + (split > 0 ? split : 1), data + size);

    vrl::KcsvFile rules;
    if (!table.empty()) rules.ParseUtf8(table);
    const vrl::MusicRequest request = vrl::ReadMusicRequest(record.empty() ? nullptr : record.data(), record.size());
    if (request.path.size() > vrl::kMusicPathChars) std::abort();
    const vrl::CandidateSearch search = vrl::FindCandidates(vrl::MusicRulesOf(rules), request);
    for (const std::u16string& entry : search.entries) {
        if (entry.empty() || entry.size() > 259) std::abort();
    }
    if (search.keepPlaying && !search.entries.empty()) std::abort();
    vrl::MusicDateTimeText(request, data[0] & 1);
    vrl::MidiDeviceCodeOf(rules);

    std::string comments(record.begin(), record.end());
    comments.append(2, '\0');
    vrl::LoopPointsOf(comments.c_str());
    return 0;
}
