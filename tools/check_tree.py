# SPDX-License-Identifier: Apache-2.0
"""check_tree: how a check of the source tree is called, and what it answers."""

import pathlib
import sys


def main(faults, self_test, praise):
    """Prints each fault of the tree, or the praise; 0 only when there is none."""
    if "--self-test" in sys.argv:
        return 1 if self_test() else 0
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
    found = list(faults(root))
    print("\n".join(found) if found else praise)
    return 1 if found else 0
