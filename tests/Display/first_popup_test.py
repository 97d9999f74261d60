#!/usr/bin/env python3
"""Does in an empty folder what the page on integrating says, up to the first popup, with the package as it is installed.

usage: first_popup_test.py PAGE INSTALLED FOLDER
"""

import re
import shutil
import subprocess
import sys
from pathlib import Path

from desktop import Application, desktop, eventually, in_session, keys

in_session()

page, installed, folder = Path(sys.argv[1]).read_text(), Path(sys.argv[2]), Path(sys.argv[3])
steps = re.search(r"^## Your first popup$(.*?)^## ", page, re.MULTILINE | re.DOTALL)[1]
CARD = re.search(r'"layoutBackgroundColor", "#(\w+)"', steps)[1]

# A block is a file where its name stands before it, else commands: to install the libraries; to build and start.
BLOCK = r"^(?:`([\w.]+)`:\n\n)?(?:<!-- \S+ -->\n)?```\w*\n(.*?)^```$"
blocks = re.findall(BLOCK, steps, re.MULTILINE | re.DOTALL)
files = {name: text for name, text in blocks if name}
install, use = (text for name, text in blocks if not name)

shutil.rmtree(folder, ignore_errors=True)
folder.mkdir()
for name, text in files.items():
    (folder / name).write_text(text)
(folder / re.search(r'--prefix "\$PWD/([\w-]+)"', install)[1]).symlink_to(installed)

*build, start = use.splitlines()
subprocess.run(["sh", "-ec", "\n".join(build)], cwd=folder, check=True)


class FirstPopup(Application):
    def arguments(self):
        return []


with desktop() as screen, FirstPopup([folder / start], []) as app:
    eventually(lambda: screen.box(CARD), "the popup")
    keys("Escape")
    eventually(lambda: not screen.box(CARD), "it closed")
