import hypothesis
import pytest

import loopwise as lw

hypothesis.settings.register_profile("same", derandomize=True, database=None, deadline=None, max_examples=150)
hypothesis.settings.load_profile("same")


@pytest.fixture
def trefoil():
    return lw.sample("trefoil")
