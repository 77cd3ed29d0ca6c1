# SPDX-License-Identifier: MIT
"""Sphinx's settings. The pages that it reads are put together in build/docs/pages by docs/site/build."""

import pathlib
import re

from docutils import nodes
from sphinx.transforms.post_transforms import SphinxPostTransform
from sphinx.util.nodes import make_refnode

ROOT = pathlib.Path(__file__).parent.parent.parent

project = "Larynth"
html_title = "Larynth"
extensions = ["myst_parser", "sphinx.ext.autodoc", "sphinx.ext.napoleon"]
myst_enable_extensions = ["colon_fence"]
myst_heading_anchors = 3
suppress_warnings = ["myst.header"]  # a page that a table makes may leave a level out

html_theme = "furo"
html_static_path = [str(ROOT / "docs/site/static")]
html_css_files = ["site.css"]
html_js_files = ["theme.js"]
html_extra_path = [str(ROOT / "build/docs/media")]
html_copy_source = False
html_show_sphinx = False
html_show_copyright = False
html_theme_options = {"navigation_with_keys": True}

default_role = "py:obj"  # docstrings name functions and classes between single accents
autodoc_typehints = "none"  # the parameters' descriptions say it
autodoc_member_order = "bysource"
autodoc_default_options = {"members": True}
napoleon_google_docstring = False
napoleon_use_rtype = False
napoleon_use_ivar = True


class PathsToLinks(SphinxPostTransform):
    """What pages name as `docs/NAME.md` or `Include/NAME.h` is a link, where there is such a page."""

    default_priority = 200

    def run(self, **kwargs: object) -> None:
        for literal in list(self.document.findall(nodes.literal)):
            if not isinstance(literal.parent, nodes.reference) and (link := self.link(literal.astext())):
                literal.replace_self(link)
                link += literal

    def link(self, path: str) -> nodes.reference | None:
        if page := re.fullmatch(r"docs/([\w-]+)\.md", path):
            for name in (f"guides/{page[1]}", page[1]):
                if name in self.env.all_docs:
                    return make_refnode(self.app.builder, self.env.docname, name, "", [], path)
        if header := re.fullmatch(r"(?:Include/|<larynth/)(\w+)\.h>?", path):
            if (ROOT / f"Include/{header[1]}.h").exists():
                up = "../" * self.env.docname.count("/")
                return nodes.reference("", "", refuri=f"{up}cpp/{header[1]}_8h.html", internal=False)
        return None


def setup(app: object) -> None:
    app.add_post_transform(PathsToLinks)
