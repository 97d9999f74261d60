#!/usr/bin/env python3
"""Whether what the documentation quotes, links to and shows is there: code that names its file is that file's, links
lead somewhere, and the module shows every campaign without objection.

usage: check.py ROOT PROGRAM
"""

import re
import subprocess
import sys
import tempfile
from pathlib import Path

root, program = Path(sys.argv[1]), sys.argv[2]
problems = []


def anchors(text):
    headings = re.findall(r"^#+ (.*)$", text, re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading).strip().lower().replace(" ", "-") for heading in headings}


for page in [root / "README.md", root / "CONTRIBUTING.md", root / "SECURITY.md", *root.glob("docs/*.md")]:
    text = page.read_text()
    for file, code in re.findall(r"^<!-- (\S+) -->\n```\w*\n(.*?)^```$", text, re.MULTILINE | re.DOTALL):
        if (root / file).read_text() != code:
            problems.append(f"{page}: the quotation of {file} is out of date")
    for target, anchor in re.findall(r"\]\(([^)#:]*)(?:#([^)]*))?\)", text):
        linked = page.parent / target if target else page
        if not linked.exists():
            problems.append(f"{page}: {target} is not there")
        elif anchor and anchor not in anchors(linked.read_text()):
            problems.append(f"{page}: {target}#{anchor} is not there")

campaigns = list(root.glob("docs/campaigns/*.json"))
for campaign in campaigns:
    with tempfile.TemporaryDirectory() as folder:
        shown = subprocess.run([program, "render", campaign, "-o", folder + "/picture.png", "--device", "phone", "--customer", "c-2041", "--strict"])
        if shown.returncode:
            problems.append(f"{campaign} is not shown")

print("\n".join(problems))
sys.exit(bool(problems) or len(campaigns) < 7)
