#include "web/site.h"

#include <gtest/gtest.h>
#include <wx/utils.h>

#include "base/build_facts.h"
#include "support/folder.h"

TEST(Site, AlwaysEndsInASlash) {
    wxSetEnv("VANTREO_SITE", "http://127.0.0.1:8080");
    EXPECT_EQ(site_base(), "http://127.0.0.1:8080/");
    wxSetEnv("VANTREO_SITE", "http://127.0.0.1:8080/sub/");
    EXPECT_EQ(site_base(), "http://127.0.0.1:8080/sub/");
}

TEST(Site, IsTheBuildsUnlessTheEnvironmentSetsOne) {
    wxSetEnv("VANTREO_SITE", "");
    EXPECT_EQ(site_base(), kBuildSite);
    wxUnsetEnv("VANTREO_SITE");
    EXPECT_EQ(site_base(), kBuildSite);
}
