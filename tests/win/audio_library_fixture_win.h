#pragma once
// A program folder with the recording stand-ins of the audio library and its MIDI add-on, bound
// for the test; the stand-in writes every call it gets to bass_trace.txt there.

#include <gtest/gtest.h>
#include <objbase.h>

#include <string>
#include <vector>

#include "music/bass_api_win.h"
#include "tests/common/alerts_support_win.h"
#include "ui/wide_win.h"

namespace vrltest {

class AudioLibraryTest : public ::testing::Test {
protected:
    void SetUp() override {
        ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);  // for shortcuts
        for (const wchar_t* name : {L"bass.dll", L"bassmidi.dll"})
            ASSERT_TRUE(CopyStandIn(L"simbass", name, folder_.Path()));
        ASSERT_TRUE(vrl::BassApi::LoadFrom(folder_.Path()));
    }
    // Unbind before the folder goes, so that its DLLs can be deleted.
    void TearDown() override {
        vrl::BassApi::LoadFrom(empty_.Path());
        ::CoUninitialize();
    }

    std::u16string File(const std::wstring& name) const { return vrl::U16(folder_ / name); }
    std::vector<std::string> Trace() const { return ReadLines(folder_ / L"bass_trace.txt"); }

    ScratchFolder folder_;
    ScratchFolder empty_;
};

}  // namespace vrltest
