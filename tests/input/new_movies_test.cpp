#include "input/new_movies.h"

#include <gtest/gtest.h>

#include "support/folder.h"

namespace {

wxArrayString list(std::initializer_list<wxString> paths) {
    wxArrayString result;
    for (const wxString& path : paths)
        result.Add(path);
    return result;
}

}  // namespace

TEST(NewMovies, KeepTheirOrder) {
    EXPECT_EQ(new_movies(list({}), list({"/c", "/a", "/b"})), list({"/c", "/a", "/b"}));
}

TEST(NewMovies, LeaveOutWhatIsInTheList) {
    EXPECT_EQ(new_movies(list({"/a", "/b"}), list({"/b", "/c", "/a"})), list({"/c"}));
}

TEST(NewMovies, LeaveOutDuplicates) {
    EXPECT_EQ(new_movies(list({}), list({"/a", "/a"})), list({"/a"}));
}

TEST(NewMovies, IgnoreLetterCase) {
    EXPECT_EQ(new_movies(list({L"/\u00c9t\u00e9.AVI"}), list({L"/\u00e9T\u00c9.avi", "/x", "/X"})),
              list({"/x"}));
}
