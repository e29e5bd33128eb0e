#include "web/page_html.h"

#include <gtest/gtest.h>

#include "support/folder.h"

TEST(Pages, OfOneLinkHaveNoClosingBodyTag) {
    EXPECT_EQ(link_page("#F6F5F4", "http://x/Translations", "Translate!"),
              "<body bgcolor=#F6F5F4><a href=http://x/Translations>Translate!</a>");
}

TEST(Pages, AboutShowsVersionPlatformAndLinks) {
    AboutTexts texts;
    texts.translations = "Translations:";
    texts.thanks = "Thanks";
    texts.contact = "Contact:";
    texts.youLike = "You like?";
    texts.donate = "Donate!";
    texts.thanksAddress = "http://x/Greetings";
    texts.contactAddress = "http://x/Contact";
    EXPECT_EQ(about_page_html("#FFFFFF", texts),
              "<body bgcolor=#FFFFFF><p align=center><font size=6><b>Vantreo</b> 1.24 for Linux"
              "</font><br>Vantreo project<br>written by its contributors<br><br>"
              "Translations: <a href=http://x/Greetings>Thanks</a><br><br>"
              "Contact:<br><a href=http://x/Contact>http://x/Contact</a><br><br>"
              "<b>You like?</b><br>Donate!</p></body>");
}
