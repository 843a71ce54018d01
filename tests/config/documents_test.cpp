// What the documents say about settings, held to the tables.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/run_program.h"
#include "config/config_file.h"
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
