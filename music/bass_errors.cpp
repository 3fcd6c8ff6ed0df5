#include "music/bass_errors.h"

#include <iterator>

namespace vrl {
namespace {

struct ErrorName {
    int code;
    const char16_t* name;
};

// Codes 11-13, 15-17, 26, 28, 30, 35 and 36 are unused by the library: they fall through to
// "BASS_ERROR_UNDEFINED" like any code outside the table.
constexpr ErrorName kErrorNames[] = {
    {-1, u"BASS_ERROR_UNKNOWN"},  {0, u"BASS_OK"},
    {1, u"BASS_ERROR_MEM"},       {2, u"BASS_ERROR_FILEOPEN"},
    {3, u"BASS_ERROR_DRIVER"},    {4, u"BASS_ERROR_BUFLOST"},
    {5, u"BASS_ERROR_HANDLE"},    {6, u"BASS_ERROR_FORMAT"},
    {7, u"BASS_ERROR_POSITION"},  {8, u"BASS_ERROR_INIT"},
    {9, u"BASS_ERROR_START"},     {10, u"BASS_ERROR_SSL"},
    {14, u"BASS_ERROR_ALREADY"},  {18, u"BASS_ERROR_NOCHAN"},
    {19, u"BASS_ERROR_ILLTYPE"},  {20, u"BASS_ERROR_ILLPARAM"},
    {21, u"BASS_ERROR_NO3D"},     {22, u"BASS_ERROR_NOEAX"},
    {23, u"BASS_ERROR_DEVICE"},   {24, u"BASS_ERROR_NOPLAY"},
    {25, u"BASS_ERROR_FREQ"},     {27, u"BASS_ERROR_NOTFILE"},
    {29, u"BASS_ERROR_NOHW"},     {31, u"BASS_ERROR_EMPTY"},
    {32, u"BASS_ERROR_NONET"},    {33, u"BASS_ERROR_CREATE"},
    {34, u"BASS_ERROR_NOFX"},     {37, u"BASS_ERROR_NOTAVAIL"},
    {38, u"BASS_ERROR_DECODE"},   {39, u"BASS_ERROR_DX"},
    {40, u"BASS_ERROR_TIMEOUT"},  {41, u"BASS_ERROR_FILEFORM"},
    {42, u"BASS_ERROR_SPEAKER"},  {43, u"BASS_ERROR_VERSION"},
    {44, u"BASS_ERROR_CODEC"},    {45, u"BASS_ERROR_ENDED"},
    {46, u"BASS_ERROR_BUSY"},
};

}  // namespace

const char16_t* BassErrorName(int code) {
    for (const ErrorName& entry : kErrorNames) {
        if (entry.code == code) return entry.name;
    }
    return u"BASS_ERROR_UNDEFINED";
}

}  // namespace vrl
