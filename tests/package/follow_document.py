"""Does what a document says: writes its files and runs its commands, in an empty folder.

    follow_document.py DOCUMENT FOLDER

A file is a block after a line "`NAME`:". Commands are in the blocks "console", after "$ "; the other lines
there are their output.
"""
import pathlib
import re
import subprocess
import sys

BLOCK = re.compile(r"(?:^`(?P<file>[^`\n]+)`:\n\n)?^```(?P<kind>\S+)\n(?P<text>.*?)^```$",
                   re.MULTILINE | re.DOTALL)
END = "END OF COMMAND"


def steps(text):
    """The commands of the document, each with its expected output."""
    found = []
    for block in BLOCK.finditer(text):
        for line in block["text"].splitlines() if block["kind"] == "console" else ():
            if line.startswith("$ "):
                found.append((line[2:], []))
            else:
                found[-1][1].append(line)
    return found


def main():
    document, folder = map(pathlib.Path, sys.argv[1:])
    text = document.read_text(encoding="utf-8")
    files = [block for block in BLOCK.finditer(text) if block["file"]]
    commands = steps(text)
    if not files or not commands:
        sys.exit(f"{document} has no files or no commands")
    folder.mkdir()
    for block in files:
        (folder / block["file"]).write_text(block["text"], encoding="utf-8")
    # One shell, because a command may set variables for the next ones.
    script = "set -eu\n" + "".join(f"{command}\necho '{END}'\n" for command, _ in commands)
    ran = subprocess.run(["bash", "-c", script], cwd=folder, capture_output=True, text=True)
    outputs = ran.stdout.split(END + "\n")
    for (command, expected), output in zip(commands, outputs):
        if output.splitlines() != expected:
            sys.exit(f"{command}\nprints:\n{output}\nnot:\n" + "\n".join(expected) + ran.stderr)
    if ran.returncode or len(outputs) != len(commands) + 1:
        sys.exit(f"{commands[len(outputs) - 1][0]} fails:\n{ran.stderr}")


if __name__ == "__main__":
    main()
