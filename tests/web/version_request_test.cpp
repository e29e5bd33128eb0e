#include "web/version_request.h"

#include <gtest/gtest.h>
#include <wx/utils.h>

#include "support/folder.h"

TEST(VersionRequest, AsksWithVersionAndPlatform) {
    wxSetEnv("VANTREO_SITE", "http://127.0.0.1:8080");
    EXPECT_EQ(version_request_address(),
              "http://127.0.0.1:8080/current_version.php?version=1.24&os=Linux");
    wxUnsetEnv("VANTREO_SITE");
}

TEST(VersionRequest, FindsTheNumberBetweenTheMarkers) {
    EXPECT_EQ(released_version("CURRENT_VERSION=>1.25<=CURRENT_VERSION"), 1.25);
    EXPECT_EQ(released_version("<html>\nCURRENT_VERSION=>1.3b<=CURRENT_VERSION\n</html>"), 1.3);
    EXPECT_GT(released_version("CURRENT_VERSION=>1.3<=CURRENT_VERSION"), 1.24);
}

TEST(VersionRequest, TakesAnythingElseForNoRelease) {
    for (const wxString reply :
         {"", "1.25", "CURRENT_VERSION=>1.25", "CURRENT_VERSION=><=CURRENT_VERSION",
          "CURRENT_VERSION=>new<=CURRENT_VERSION"})
        EXPECT_EQ(released_version(reply), 0.0) << reply.utf8_string();
}

TEST(VersionRequest, ReadsAReplyThatIsCutInsideACharacter) {
    EXPECT_EQ(reply_text("CURRENT_VERSION=>1.25<=CURRENT_VERSION \xE2\x82"),
              "CURRENT_VERSION=>1.25<=CURRENT_VERSION ");
    EXPECT_EQ(reply_text("CURRENT_VERSION=>1.25<=CURRENT_VERSION \xED\xB8\x96 page"), "");
}
