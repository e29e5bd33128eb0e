"""The version and the icon of the Mac OS X bundle, as far as another system can read them."""

import plistlib
import re
import unittest

from repository import BUILD, VERSION, output_of

SIZES = {16, 32, 48, 128, 256, 512}


class MacBundle(unittest.TestCase):
    def setUp(self) -> None:
        self.facts = plistlib.loads((BUILD / "Info.plist").read_bytes())

    def test_has_the_version_of_the_build(self) -> None:
        self.assertEqual(self.facts["CFBundleShortVersionString"], VERSION)
        self.assertEqual(self.facts["CFBundleVersion"], VERSION)

    def test_icon_has_every_size(self) -> None:
        icon = BUILD / "icons" / self.facts["CFBundleIconFile"]
        icons = output_of("icns2png", "--list", icon)
        self.assertEqual({int(side) for side in re.findall(r"(\d+)x\1 32-bit icon", icons)}, SIZES)


if __name__ == "__main__":
    unittest.main()
