#!/usr/bin/env python3
"""Reads the syntax tree of headers as clang dumps it in JSON, and prints the linker's name of every
function that is marked as exported and of every public and protected member of a class so marked, but
for those that are left to derived classes.
The dump is far larger than what is looked for: it is read declaration by declaration."""
import json
import sys

FUNCTIONS = ('FunctionDecl', 'CXXMethodDecl', 'CXXConstructorDecl', 'CXXDestructorDecl', 'CXXConversionDecl')


def names(node, in_exported_class=False):
    parts = node.get('inner', [])
    exported = in_exported_class or any(part['kind'] == 'DLLExportAttr' for part in parts)
    if node['kind'] == 'CXXRecordDecl':
        access = 'private' if node['tagUsed'] == 'class' else 'public'
        for part in parts:
            access = part['access'] if part['kind'] == 'AccessSpecDecl' else access
            if access != 'private':
                yield from names(part, exported)
    elif node['kind'] in ('NamespaceDecl', 'LinkageSpecDecl'):
        for part in parts:
            yield from names(part)
    elif node['kind'] in FUNCTIONS and exported and not any(
            node.get(kind) for kind in ('isImplicit', 'explicitlyDeleted', 'pure')):
        yield node['mangledName']


def declarations(lines):
    text = []
    for line in lines:
        text.append(line)
        if line.rstrip(',\n') == '    {':
            text = ['{']
        elif line.rstrip(',\n') == '    }':
            text[-1] = '}'
            if any('"DLLExportAttr"' in part for part in text):
                yield json.loads(''.join(text))
            text = []


for declaration in declarations(sys.stdin):
    for name in names(declaration):
        print(name)
