vantix_find(PUBLIC Qt6 6.4 COMPONENTS Quick)
