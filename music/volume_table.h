#pragma once
// The per-file volumes of Volume.kcsv and the master volume: read when the music panel starts,
// changed in memory while it runs, written back when the program ends. Portable.

#include <map>
#include <string>
#include <vector>

namespace vrl {

class KcsvFile;

class VolumeTable {
public:
    static constexpr int kMin = 50;
    static constexpr int kMax = 100;
    static constexpr int kDefault = 100;  // a file without a stored volume, and the master without one

    // The rows in order: a later row for the same file overrides an earlier one; volumes are
    // clamped to 50..100, and an empty or missing volume cell reads as 100.
    void Load(const KcsvFile& table);
    // Option "MasterVolume" clamped to 50..100, or 100 when the option is absent.
    static int MasterVolumeOf(const KcsvFile& table);
    // Replaces the rows of `table` with one row per file in the order the files first came, and
    // sets its "MasterVolume" option; adds the "File" and "Volume" columns when it lacks them.
    void WriteTo(KcsvFile& table, int masterVolume) const;
    // The "File" and "Volume" columns, added when `table` lacks them.
    static void AddColumnsTo(KcsvFile& table);

    // The stored volume of a file (exact, case-sensitive key), or 100.
    int VolumeOf(const std::u16string& file) const;
    bool Has(const std::u16string& file) const { return volumes_.count(file) != 0; }
    void Set(const std::u16string& file, int volume);
    const std::vector<std::u16string>& Order() const { return order_; }

    static int Clamp(int volume) { return volume < kMin ? kMin : volume > kMax ? kMax : volume; }

private:
    std::map<std::u16string, int> volumes_;
    std::vector<std::u16string> order_;
};

}  // namespace vrl
