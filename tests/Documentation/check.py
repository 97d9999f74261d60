#!/usr/bin/env python3
"""Whether what the documentation quotes, links to and shows is there: code that names its file is that file's, links
lead somewhere, and the campaigns of the gallery are without fault and have their pictures.

usage: check.py ROOT PROGRAM
"""

import re
import subprocess
import sys
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
checked = subprocess.run([program, "check", root / "docs/campaigns", "--strict", "--customer", "c-2041"],
                         capture_output=True, text=True)
if checked.returncode:
    problems.append(checked.stdout + checked.stderr)
gallery = (root / "docs/campaigns.md").read_text()
for campaign in campaigns:
    for file in (campaign, campaign.with_suffix(".png")):
        if f"](campaigns/{file.name})" not in gallery or not file.exists():
            problems.append(f"the gallery lacks {file.name}")

print("\n".join(problems))
sys.exit(bool(problems) or len(campaigns) < 7)
