// SPDX-License-Identifier: MIT
// Debian's build of the theme's style sheet has no rules for dark systems, only for who chose dark by the button.
if (document.body.dataset.theme === "auto") {
    document.body.dataset.theme = matchMedia("(prefers-color-scheme: dark)").matches ? "dark" : "light";
}
