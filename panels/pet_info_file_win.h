#pragma once
// PetInfo.kcsv as the pet panel and its colour dialog read and write it: loaded whole, changed in
// the options each owns, written back whole with every other option kept.

#include "settings/kcsv.h"

namespace vrl {

class PetInfoFile {
public:
    // Reads PetInfo.kcsv from the program folder (the current folder). False when there is none
    // or it cannot be read; the table is then empty and every value takes its default.
    bool Load();
    // Writes the table back. A file that is there but could not be read is left alone: writing
    // our options over it would lose what the player wrote (the values then last for this run).
    bool Save() const;

    KcsvFile& Table() { return table_; }
    const KcsvFile& Table() const { return table_; }

private:
    KcsvFile table_;
    bool unreadable_ = false;
};

}  // namespace vrl
