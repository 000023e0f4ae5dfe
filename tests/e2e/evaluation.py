"""The results of a calibration, worked out in exact fractions from what was typed, and their German display."""

from decimal import ROUND_HALF_UP, Decimal, localcontext
from fractions import Fraction


def _number(text):
    return Fraction(text.replace(",", "."))


def _mean(values):
    return sum(values) / Fraction(len(values))


def _covariance(first, second):
    mean_first, mean_second = _mean(first), _mean(second)
    return sum((x - mean_first) * (y - mean_second) for x, y in zip(first, second)) / (len(first) - 1)


class Evaluation:
    """fields: for each field the covariable's text and the pairs of direct and indirect text."""

    def __init__(self, fields):
        points = [(_number(direct), _number(indirect), _number(value))
                  for value, pairs in fields for direct, indirect in pairs]
        self._samples = [list(sample) for sample in zip(*points)]

    @staticmethod
    def display(value, decimals):
        """A number, or the German text of one, with that many decimals, halves away from zero, thousands grouped."""
        exact = _number(value) if isinstance(value, str) else value
        with localcontext() as context:
            context.prec = 50
            number = Decimal(exact.numerator) / Decimal(exact.denominator)
            rounded = number.quantize(Decimal(1).scaleb(-decimals), ROUND_HALF_UP)
        return f"{rounded:,f}".translate(str.maketrans(",.", ".,"))

    def _determination(self, first, second):
        return _covariance(first, second) ** 2 / (_covariance(first, first) * _covariance(second, second))

    def _line(self, dependent, independent, slope):
        return [self.display(slope, 4), self.display(_mean(dependent) - slope * _mean(independent), 2)]

    def results(self):
        """The values of the plausibility page from top to bottom, with the decimals of a new document."""
        direct, indirect, covariable = self._samples
        pairs = ((direct, indirect), (direct, covariable), (indirect, covariable))
        variances = [_covariance(sample, sample) for sample in self._samples]
        with localcontext() as context:
            context.prec = 50
            deviations = [Fraction((Decimal(v.numerator) / Decimal(v.denominator)).sqrt()) for v in variances]
        slope_direct, slope_indirect = (_covariance(sample, covariable) / variances[2] for sample in (direct, indirect))
        return ([self.display(_mean(sample), 1) for sample in self._samples]
                + [self.display(variance, 2) for variance in variances]
                + [self.display(deviation, 2) for deviation in deviations]
                + [self.display(_covariance(*pair), 2) for pair in pairs]
                + [self.display(self._determination(*pair), 2) for pair in pairs]
                # The line between both values leads over the covariable.
                + self._line(direct, indirect, slope_direct / slope_indirect)
                + self._line(direct, covariable, slope_direct)
                + self._line(indirect, covariable, slope_indirect))
