#!/usr/bin/env python3
"""Checks the language of comments in C++ sources and of Markdown pages.

Usage: comment_language.py FILE...
Prints one line per finding, `file:line: rule: text`, and exits with 1 if there is one.
"""
import re
import sys

MAX_WORDS = 25
FIRST_WORDS = re.compile(r"(What|Whatever|Who|Whoever|Whose|Which|Whichever|Of|Under|Beside)\b")
LISTED_WORDS = re.compile(
    r"\b(tells?|told|telling|stands?(?!-)|stood|says?|said|anew|house|walls?(?! clock)|roads?|taps?|dialect|whoever|so long|so many)\b",
    re.IGNORECASE)
CODE = re.compile(r"`[^`]*`|\"[^\"]*\"|'[^']{2,}'")
LINK = re.compile(r"\[([^\]]*)\]\([^)]*\)")
SENTENCE_END = re.compile(r"(?<=[.;:!?])\s+(?=[A-Z`\"(])|(?<=[;:])\s+")
NOLINT = re.compile(r"NOLINT|clang-format|IWYU")


def comment_blocks(lines):
    """Yields (line number, text) of each run of comment lines, and of each comment behind code."""
    start, texts = 0, []
    for number, line in enumerate(lines, 1):
        own = re.match(r"\s*///?<?\s?(.*)", line)
        if own:
            if not texts:
                start = number
            texts.append(own.group(1))
            continue
        if texts:
            yield start, texts
            texts = []
        behind = re.match(r"[^\"]*[;,{})]\s+//\s(.*)", line)
        if behind:
            yield number, [behind.group(1)]
    if texts:
        yield start, texts


def paragraphs(lines):
    """Yields (line number, text) of each paragraph and list item of a Markdown page; tables cell by cell."""
    start, texts, fenced = 0, [], False
    for number, line in enumerate(lines, 1):
        if line.startswith("```"):
            fenced = not fenced
        plain = not fenced and not line.startswith(("```", "#", "|", "!", "<!--"))
        new_item = re.match(r"\s*([-*]|\d+\.)\s", line)
        if texts and (not plain or not line.strip() or new_item):
            yield start, texts
            texts = []
        if plain and line.strip():
            if not texts:
                start = number
            texts.append(re.sub(r"^\s*([-*]|\d+\.)\s", "", line).strip())
        if not fenced and line.startswith("|"):
            for cell in line.strip().strip("|").split("|"):
                yield number, [cell.strip()]
    if texts:
        yield start, texts


def findings(text):
    if NOLINT.search(text):
        return
    plain = CODE.sub("X", LINK.sub(r"\1", text))
    for sentence in SENTENCE_END.split(plain):
        if FIRST_WORDS.match(sentence) and not sentence.rstrip().endswith("?"):
            yield "first word", sentence
        listed = LISTED_WORDS.search(sentence)
        if listed:
            yield "listed word '%s'" % listed.group(0), sentence
        words = re.findall(r"[\w'.:/()<>*&-]*\w[\w'.:/()<>*&-]*", sentence)
        if len(words) > MAX_WORDS:
            yield "%d words" % len(words), sentence


def main():
    count = 0
    for name in sys.argv[1:]:
        with open(name, encoding="utf-8") as file:
            lines = file.read().split("\n")
        for number, texts in (paragraphs if name.endswith(".md") else comment_blocks)(lines):
            for rule, sentence in findings(" ".join(texts)):
                print("%s:%d: %s: %s" % (name, number, rule, sentence.strip()[:160]))
                count += 1
    return 1 if count else 0


sys.exit(main())
