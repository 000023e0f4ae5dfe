// moc_wrong.cpp with an umlaut: ü
