"""The pictures of the windows, as drawings."""
