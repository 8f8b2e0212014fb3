"""Fails where a document names a path of the project that does not exist.

A path is a link's target or a word in code that has a slash or a known ending, and starts at the root
or at the document. Paths below build/ are made by the build and not looked for.
"""

import pathlib
import re
import sys

ENDINGS = (".md", ".cpp", ".h", ".qml", ".py", ".png", ".txt", ".json")


def named_paths(text):
    yield from re.findall(r"\]\(([^)#:]+)\)", text)
    yield from re.findall(r'<img src="([^"]+)"', text)
    code = re.findall(r"`([^`\n]+)`", text) + re.findall(r"^ {4}(.+)$", text, re.MULTILINE)
    for snippet in code:
        for word in snippet.split():
            if re.fullmatch(r"[\w./-]+", word) and is_path(word):
                yield word


def is_path(word):
    return not word.startswith(("/", "-", "~")) and ("/" in word or word.endswith(ENDINGS))


def exists(root, document, word):
    places = (root, document.parent)
    return any((place / word).exists() for place in places) or any(root.glob("src/**/" + word))


def main():
    root = pathlib.Path(sys.argv[1])
    documents = sorted(root.glob("*.md")) + sorted(root.glob("docs/**/*.md"))
    names = [(document, word) for document in documents
             for word in named_paths(document.read_text(encoding="utf-8"))
             if not word.removeprefix("./").startswith("build/")]
    missing = [f"{document.name}: {word}" for document, word in names if not exists(root, document, word)]
    print(f"{len(names)} paths in {len(documents)} documents")
    if missing or not names:
        sys.exit("missing:\n" + "\n".join(missing))


main()
