// What a process does before it has an input to be recorded with; the transcripts show the rest.
#include "support/files.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

TEST(FilesDeathTest, EveryMissingStandardStreamIsMadeUpFor) {
    for (const int first : {0, 1, 2}) {
        const auto closeAndEnsure = [first] {
            for (int descriptor = first; descriptor <= 2; ++descriptor) {
                close(descriptor);
            }
            EnsureStandardStreams();
            const int next = dup(0);  // the lowest that is free
            _exit(next > 2 ? 0 : 1);
        };
        EXPECT_EXIT(closeAndEnsure(), testing::ExitedWithCode(0), "") << first;
    }
}
