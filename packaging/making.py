"""When a package is made."""

import datetime
import os


def time():
    """Now, or the time that a repeatable build is given."""
    epoch = os.environ.get("SOURCE_DATE_EPOCH")
    utc = datetime.timezone.utc
    return datetime.datetime.fromtimestamp(int(epoch), utc) if epoch else datetime.datetime.now(utc)
