// What the documents say about settings, held to the tables.
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/run_program.h"
#include "config/config_file.h"
#include "config/glob_cfg.h"
#include "config/options.h"

namespace {

// The completions offered for the last of `words`.
std::string Complete(const std::string& words) {
    const std::string script = "source '" TALUREX_SOURCE_DIR "/completions/talurex'\n"
                               "COMP_WORDS=(" +
                               words +
                               ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_talurex\n"
                               "echo \"${COMPREPLY[*]}\"\n";
    return RunProgram({"bash", "-c", script}, "", "/").Output;
}

TEST(DocumentsTest, ManPageKnowsEveryOptionAndKey) {
    std::string page = ReadFile(TALUREX_SOURCE_DIR "/docs/talurex.6");
    for (const Option& option : OPTIONS) {
        const std::string entry = std::string("\\-") + option.Name;
        EXPECT_NE(page.find(entry), std::string::npos) << option.Name;
    }
    for (const ConfigKey& key : CONFIG_KEYS) {
        EXPECT_NE(page.find(std::string(".B ") + key.Name + "\n"), std::string::npos) << key.Name;
    }
}

TEST(DocumentsTest, ManPageAndChangesNameTheVersion) {
    const std::string version = TALUREX_VERSION;
    const std::string page = ReadFile(TALUREX_SOURCE_DIR "/docs/talurex.6");
    EXPECT_EQ(page.substr(0, page.find('\n')), std::string(".TH TALUREX 6 ") +
                                                   TALUREX_VERSION_DATE + " \"Talurex " + version +
                                                   "\" Games");
    const std::string changes = ReadFile(TALUREX_SOURCE_DIR "/CHANGELOG.md");
    EXPECT_NE(changes.find("\n## " + version + "\n"), std::string::npos);
}

// The program itself lists its commands, as "/load, /save, ...".
TEST(DocumentsTest, ManPageKnowsEveryCommand) {
    const ScratchFolder folder;
    const std::string page = ReadFile(TALUREX_SOURCE_DIR "/docs/talurex.6");
    const std::string help = RunProgram({TALUREX_PROGRAM}, "/help\n", folder.Path()).Output;
    const std::size_t begin = help.find("/load,");
    ASSERT_NE(begin, std::string::npos);
    std::istringstream list(help.substr(begin, help.find("\n\n", begin) - begin));
    int count = 0;
    for (std::string name; list >> name; ++count) {
        name.pop_back();
        EXPECT_TRUE(page.find(".B " + name + "\n") != std::string::npos ||
                    page.find(".BI " + name + " ") != std::string::npos)
            << name;
    }
    EXPECT_EQ(count, 26);
}

TEST(DocumentsTest, CompletionOffersWhatTheUsageTextShows) {
    const std::string offered = ' ' + Complete("talurex -");
    for (const Option& option : OPTIONS) {
        const std::string entry = std::string(" -") + option.Name;
        const bool listed = option.Usage[0] != '\0';
        EXPECT_EQ(offered.find(entry) != std::string::npos, listed) << option.Name;
        for (const OptionWord& word : option.Words) {
            const std::string prefix = std::string("talurex -") + option.Name + " = ";
            EXPECT_EQ(Complete(prefix + word.Short), std::string(word.Long) + " \n");
        }
    }
    EXPECT_EQ(Complete("talurex -players ="), "0 1 2\n");
    EXPECT_EQ(Complete("talurex -level = 5"), "\n");
}

}  // namespace
