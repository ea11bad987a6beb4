import pathlib
import re

PAGE = pathlib.Path(__file__).parents[2] / "docs" / "python.md"


def test_the_examples_of_the_page_run():
    examples = re.findall(r"```python\n(.*?)```", PAGE.read_text(), re.DOTALL)
    assert len(examples) == 1
    for example in examples:
        exec(compile(example, str(PAGE), "exec"), {})
