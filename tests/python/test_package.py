import unittest

import quor_isdbt


class Package(unittest.TestCase):
    def test_the_module_lies_beside_it(self):
        self.assertEqual(quor_isdbt._quor_isdbt.__name__, "quor_isdbt._quor_isdbt")


if __name__ == "__main__":
    unittest.main()
