int korodbcFoundation = 0;
