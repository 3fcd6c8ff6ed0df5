// What players get on day one: the starter tables read clean, each starter log rule takes the line
// it was written for, and every command the player's guide shows prints what the guide says.

#include "settings/kcsv.h"
#include "settings/table_schema.h"
#include "tests/native/run_tool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path kSourceRoot = fs::path(VRL_TEST_DATA).parent_path().parent_path();
// The game folder the guide's examples assume; the test's scratch folder stands in for it.
const std::string kGameFolder = "C:\\Games\\Morva";
const std::string kPrompt = kGameFolder + "\\Vorrel>";

std::string ReadText(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
}

std::string ShellQuoted(const std::string& word) {
    std::string quoted = word;
    ReplaceAll(quoted, "'", "'\\''");
    return "'" + quoted + "'";
}

// A command line cut into words the way the Windows console hands them to a program.
std::vector<std::string> Words(const std::string& line) {
    std::vector<std::string> words;
    std::string word;
    bool quoted = false, any = false;
    for (char c : line) {
        if (c == '"') {
            quoted = !quoted;
            any = true;
        } else if (c == ' ' && !quoted) {
            if (any) words.push_back(word);
            word.clear();
            any = false;
        } else {
            word += c;
            any = true;
        }
    }
    if (any) words.push_back(word);
    return words;
}

std::string WithoutTrailingBlankLines(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == ' ')) text.pop_back();
    return text;
}

// One example of a guide: a ```console block, a session in the program folder in which a line
// that begins with the prompt is typed by the player and the lines up to the next prompt are what
// appears. Blocks fenced with "file:NAME" before it are written to that file in the program folder
// for this session only; blocks fenced with "starter:NAME" show that starter table as shipped.
struct GuideExample {
    std::vector<std::pair<std::string, std::string>> files;     // name, text with CR LF line ends
    std::vector<std::pair<std::string, std::string>> starters;  // the same
    std::vector<std::pair<std::string, std::string>> commands;  // typed, printed
    unsigned line = 0;
};

std::vector<GuideExample> ExamplesOf(const std::string& markdown) {
    std::vector<GuideExample> examples;
    GuideExample next;
    enum class Block { None, Example, File, Starter, Other } block = Block::None;
    std::istringstream text(markdown);
    std::string line;
    for (unsigned number = 1; std::getline(text, line); ++number) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.rfind("```", 0) == 0) {
            if (block == Block::Example) examples.push_back(std::exchange(next, GuideExample()));
            if (block != Block::None) {
                block = Block::None;
                continue;
            }
            const std::vector<std::string> info = Words(line.substr(3));
            const auto named = [&](const std::string& key) {
                return std::find_if(info.begin(), info.end(), [&](const std::string& w) { return w.rfind(key, 0) == 0; });
            };
            if (named("file:") != info.end()) {
                block = Block::File;
                next.files.emplace_back(named("file:")->substr(5), "");
            } else if (named("starter:") != info.end()) {
                block = Block::Starter;
                next.starters.emplace_back(named("starter:")->substr(8), "");
            } else {
                block = !info.empty() && info[0] == "console" ? Block::Example : Block::Other;
                next.line = number;
            }
        } else if (block == Block::File) {
            next.files.back().second += line + "\r\n";
        } else if (block == Block::Starter) {
            next.starters.back().second += line + "\r\n";
        } else if (block == Block::Example && line.rfind(kPrompt, 0) == 0) {
            next.commands.emplace_back(line.substr(kPrompt.size()), "");
        } else if (block == Block::Example && !next.commands.empty()) {
            next.commands.back().second += line + "\n";
        }
    }
    if (!next.starters.empty()) examples.push_back(next);
    return examples;
}

// A game folder with the program folder Vorrel/ holding the starter tables of one language, as a
// player has it after unpacking the package (and, for Japanese, copying ja\ over the top).
class StarterFolder : public testing::Test {
protected:
    void SetUp() override {
        tool_ = fs::read_symlink("/proc/self/exe").parent_path() / "vrltables";
        if (access(tool_.c_str(), X_OK) != 0) GTEST_SKIP() << "vrltables not built beside the tests";
        char folder[] = "/tmp/vrlstarter-XXXXXX";
        ASSERT_NE(mkdtemp(folder), nullptr);
        root_ = folder;
        // The add-on's own programs beside the companion, and the game's folders around it.
        fs::create_directory(root_ / "Vorrel");
        for (const char* name : {"VrlBoot.exe", "VrlDLL.dll", "VrlConfig.exe"}) std::ofstream(root_ / "Vorrel" / name);
        for (const char* game : {"sound", "save", "user/music", "user/sound"}) fs::create_directories(root_ / game);
    }
    void TearDown() override {
        if (!root_.empty()) fs::remove_all(root_);
    }

    void Lay(const std::string& language) {
        for (const auto& table : fs::directory_iterator(kSourceRoot / "settings/starter" / language)) {
            fs::copy_file(table.path(), root_ / "Vorrel" / table.path().filename(), fs::copy_options::overwrite_existing);
        }
    }

    // The tool run in the program folder; paths in its output read as they would in kGameFolder.
    std::string Run(const std::vector<std::string>& args, const std::string& language, int& status) const {
        std::string command = "cd " + ShellQuoted((root_ / "Vorrel").string()) + " && LC_ALL= LANG=" +
                              (language == "ja" ? "ja_JP.UTF-8 " : "C ") + ShellQuoted(tool_.string());
        for (const std::string& arg : args) command += " " + ShellQuoted(arg);
        std::string output = vrltest::RunTool(command, status);
        std::string scratch = root_.string();
        ReplaceAll(scratch, "/", "\\");
        ReplaceAll(output, scratch, kGameFolder);
        return output;
    }

    fs::path tool_;
    fs::path root_;
};

TEST_F(StarterFolder, EveryTableReadsCleanAndEveryLogRuleTakesItsLine) {
    struct Sample {
        const char* line;
        unsigned rule;
    };
    const std::vector<std::pair<std::string, std::vector<Sample>>> samples = {
        {"en",
         {{"[12] Snow Cat's level up! (Lv 7)", 1},
          {"[8] You pick up a legendary sword.", 2},
          {"[20] Snow Cat has died.", 3},
          {"[3] You pick up 120 gold pieces.", 4}}},
        {"ja",
         {{"[12] スノーキャットはレベルアップした！(Lv 7)", 1},
          {"[8] 伝説の剣を拾った。", 2},
          {"[20] スノーキャットは死んでしまった。", 3},
          {"[3] 金貨を120枚拾った。", 4}}},
    };
    for (const auto& [language, lines] : samples) {
        SCOPED_TRACE(language);
        Lay(language);
        int status = -1;
        const std::string report = Run({"check", "LogEx.kcsv", "BGMEx.kcsv", "QuickSearch.kcsv", "PetInfo.kcsv"}, "en", status);
        EXPECT_EQ(status, 0) << report;

        vrl::KcsvFile rules;
        ASSERT_TRUE(rules.ParseUtf8(ReadText(root_ / "Vorrel/LogEx.kcsv")));
        EXPECT_EQ(lines.size(), rules.RowCount()) << "one sample line per starter rule";
        for (const Sample& sample : lines) {
            const std::string taken = "\nrule " + std::to_string(sample.rule) + " (line ";
            const std::string output = Run({"try", "LogEx.kcsv", sample.line}, "en", status);
            EXPECT_NE(output.find(taken), std::string::npos) << output;
        }
    }
}

TEST_F(StarterFolder, PetPanelTableWritesOutEveryDefault) {
    for (const char* language : {"en", "ja"}) {
        vrl::KcsvFile table;
        ASSERT_TRUE(table.ParseUtf8(ReadText(kSourceRoot / "settings/starter" / language / "PetInfo.kcsv")));
        const vrl::TableSchema& schema = vrl::SchemaOf(vrl::tables::petinfo::kFile);
        for (const vrl::OptionSpec& option : schema.options) {
            const std::string name = vrl::Utf16ToUtf8(option.name);
            EXPECT_GE(table.OptionIndex(option.name), 0) << language << ": " << name;
            const vrl::ValueSpec& value = option.value;
            if (value.kind == vrl::ValueKind::ColourText) {
                EXPECT_EQ(schema.OptionColour(table, option.name), value.fallbackColour) << name;
            } else {
                EXPECT_EQ(schema.OptionNumber(table, option.name), value.NumberOf(u"", false)) << name;
            }
        }
    }
}

TEST_F(StarterFolder, TheGuidesCommandsPrintWhatTheGuideShows) {
    for (const std::string language : {"en", "ja"}) {
        const std::string name = "guide-" + language + ".md";
        const std::vector<GuideExample> examples = ExamplesOf(ReadText(kSourceRoot / "docs/guide" / name));
        EXPECT_FALSE(examples.empty()) << name << " shows no command";
        std::string scratch = root_.string();
        ReplaceAll(scratch, "/", "\\");
        for (const GuideExample& example : examples) {
            for (const auto& [file, text] : example.starters) {
                EXPECT_EQ(text, ReadText(kSourceRoot / "settings/starter" / language / file)) << name << ": " << file;
            }
            Lay(language);
            for (auto [file, text] : example.files) {
                ReplaceAll(text, kGameFolder, scratch);
                std::ofstream(root_ / "Vorrel" / file, std::ios::binary) << text;
            }
            for (const auto& [typed, printed] : example.commands) {
                std::vector<std::string> args = Words(typed);
                ASSERT_TRUE(!args.empty() && (args[0] == "vrltables" || args[0] == "vrltables.exe")) << typed;
                args.erase(args.begin());
                int status = -1;
                EXPECT_EQ(WithoutTrailingBlankLines(Run(args, language, status)), WithoutTrailingBlankLines(printed))
                    << name << ", the example on line " << example.line << ": " << typed;
            }
            for (const auto& file : example.files) fs::remove(root_ / "Vorrel" / file.first);
        }
    }
}

}  // namespace
