# SPDX-License-Identifier: GPL-3.0-or-later
"""What the tests of the real program stand on: a desktop, a sound server and a radio station, all private to a test.

Everything that is started here is ended by its own process id, and ends with the test process at the latest.
"""
