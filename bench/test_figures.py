"""Tests of the arithmetic of the benchmark."""

import math
import unittest

from figures import Figure, growth_exponent, in_turns, n_log_n_excess, ratio_figure, slope


class Figures(unittest.TestCase):
    def test_a_ratio_is_the_median_of_the_pairs_ratios(self) -> None:
        figure = ratio_figure("run", "wall time", [2, 30, 3], [1, 10, 2], limit=2)
        self.assertEqual(figure.value, 2)
        self.assertEqual(figure.samples["ratios"], [2, 3, 1.5])

    def test_pairs_of_unequal_number_are_refused(self) -> None:
        with self.assertRaises(ValueError):
            ratio_figure("run", "wall time", [1, 2], [1], limit=None)

    def test_a_value_equal_to_its_limit_is_good(self) -> None:
        self.assertTrue(Figure("part", "name", 1.3, "ratio", 1.3).is_met)
        self.assertFalse(Figure("part", "name", 1.31, "ratio", 1.3).is_met)
        self.assertIsNone(Figure("part", "name", 1.3, "ratio").is_met)

    def test_the_legs_take_turns(self) -> None:
        order = []

        def leg(name: str) -> dict[str, float]:
            order.append(name)
            return {"wall": float(len(order))}

        results = in_turns(2, {"a": lambda: leg("a"), "b": lambda: leg("b")})
        self.assertEqual(order, ["a", "b", "a", "b"])
        self.assertEqual(results, {"a": {"wall": [1, 3]}, "b": {"wall": [2, 4]}})

    def test_the_slope_is_that_of_the_closest_line(self) -> None:
        self.assertAlmostEqual(slope([(0, 1), (1, 3), (2, 5)]), 2)
        self.assertAlmostEqual(slope([(0, 0), (1, 2), (2, 0)]), 0)

    def test_the_growth_exponent_is_the_power(self) -> None:
        self.assertAlmostEqual(growth_exponent([(n, 3 * n) for n in (1, 10, 100)]), 1)
        self.assertAlmostEqual(growth_exponent([(n, n * n) for n in (1, 10, 100)]), 2)

    def test_n_log_n_is_no_excess_and_a_square_is(self) -> None:
        self.assertAlmostEqual(n_log_n_excess([(n, n * math.log(n)) for n in (10, 1000)]), 1)
        self.assertGreater(n_log_n_excess([(n, n * n) for n in (10, 1000)]), 30)


if __name__ == "__main__":
    unittest.main()
